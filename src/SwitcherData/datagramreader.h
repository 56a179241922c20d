#pragma once

#include <QByteArray>
#include <QHostAddress>
#include <QObject>
#include <QSocketNotifier>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <unordered_map>
#include <vector>

// Takes datagrams off a UDP socket on a thread of its own and hands them to the GUI thread.
// The thread only moves datagrams from the kernel into a bounded queue; decoding stays on the
// GUI thread. A burst (a room of a thousand units answering a search) or a flood (one unit
// sending tens of thousands of datagrams a second) is read off the kernel's queue at once, so
// the kernel does not drop what arrives behind it while the GUI thread is painting; and with
// a bound per sender, one sender's flood cannot crowd out another sender's datagram.
// The GUI thread watches the socket too and reads what it finds there itself: a reply to an
// idle panel is then handled as soon as the kernel wakes the GUI thread, rather than after a
// second wake-up passed on by the reading thread (about a tenth of a millisecond on a virtual
// machine). Both read and queue under one lock, so datagrams keep their order.
class DatagramReader : public QObject
{
public:
    struct Datagram
    {
        QHostAddress sender;
        QByteArray bytes;
    };
    struct Limits
    {
        int datagrams; // held at most, all senders together
        int bytes;     // held at most, all senders together
        int perSender; // held at most from one sender; 0: no bound of its own
    };

    // Reads `fd` (a duplicate of the socket's, so the socket object may close its own first)
    // until destroyed; a child of `owner`, named `name`. `ready` is called on the GUI thread
    // whenever datagrams wait and it has not been called since the last take(). nullptr when
    // no thread could be had (the caller reads the socket itself then); `fd` is the caller's
    // to close in that case.
    static DatagramReader *start(int fd, QObject *owner, const char *name, Limits limits,
                                 std::function<void()> ready);
    ~DatagramReader() override;

    // Moves up to `max` waiting datagrams into `out`, oldest first. When more wait, `ready` is
    // called again after this pass of the event loop, so paints and clicks come between batches.
    void take(int max, std::vector<Datagram> *out);
    // Whether datagrams wait to be taken.
    bool holds() const;

private:
    DatagramReader(int fd, int wake, QObject *owner, Limits limits, std::function<void()> ready);
    void askOwner();
    void run();
    // One read of up to `batch` datagrams from the kernel into the queue, through `buffers`
    // (batch × the largest datagram); true when the kernel's queue was empty. Called with the
    // mutex held.
    bool readKernel(std::vector<char> &buffers, int batch);
    void hold(const struct mmsghdr *msgs, const struct sockaddr_in *from, int count);
    void readHere();

    int m_fd;
    const int m_wake;
    const Limits m_limits;
    const std::function<void()> m_ready;
    std::thread m_thread;
    mutable std::mutex m_mutex;
    std::deque<Datagram> m_held;
    std::unordered_map<quint32, int> m_heldFrom;
    int m_heldBytes = 0;
    bool m_asked = false;
    // The GUI thread's own watch and read buffer (see the class comment).
    QSocketNotifier *m_here = nullptr;
    std::vector<char> m_hereBuffers;
};
