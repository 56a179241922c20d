#include "datagramreader.h"

#include <QMetaObject>
#include <algorithm>
#include <cerrno>
#include <netinet/in.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <system_error>
#include <unistd.h>

DatagramReader *DatagramReader::start(int fd, QObject *owner, const char *name, Limits limits,
                                      std::function<void()> ready)
{
    const int wake = eventfd(0, EFD_CLOEXEC);
    if (wake < 0)
        return nullptr;
    auto *reader = new DatagramReader(fd, wake, owner, limits, std::move(ready));
    reader->setObjectName(QLatin1String(name));
    try {
        reader->m_thread = std::thread(&DatagramReader::run, reader);
    } catch (const std::system_error &) {
        // The descriptor stays the caller's.
        reader->m_fd = -1;
        delete reader;
        return nullptr;
    }
    return reader;
}

namespace {
constexpr int Largest = 65536; // no UDP datagram is longer
constexpr int ThreadBatch = 16;
// The GUI thread reads little at a time: under a flood the reading thread takes the rest, and
// paints and clicks come between two of the GUI thread's reads.
constexpr int HereBatch = 4;
} // namespace

DatagramReader::DatagramReader(int fd, int wake, QObject *owner, Limits limits, std::function<void()> ready)
    : QObject(owner), m_fd(fd), m_wake(wake), m_limits(limits), m_ready(std::move(ready)),
      m_here(new QSocketNotifier(fd, QSocketNotifier::Read, this))
{
    connect(m_here, &QSocketNotifier::activated, this, [this] { readHere(); });
}

DatagramReader::~DatagramReader()
{
    delete m_here;
    if (m_thread.joinable()) {
        const uint64_t one = 1;
        (void)!write(m_wake, &one, sizeof one);
        m_thread.join();
    }
    close(m_wake);
    if (m_fd >= 0)
        close(m_fd);
}

void DatagramReader::take(int max, std::vector<Datagram> *out)
{
    std::lock_guard<std::mutex> lock(m_mutex);
    for (int n = 0; n < max && !m_held.empty(); ++n) {
        Datagram &d = m_held.front();
        m_heldBytes -= d.bytes.size();
        if (m_limits.perSender > 0) {
            const auto from = m_heldFrom.find(d.sender.toIPv4Address());
            if (from != m_heldFrom.end() && --from->second <= 0)
                m_heldFrom.erase(from);
        }
        out->push_back(std::move(d));
        m_held.pop_front();
    }
    if (m_held.empty())
        m_asked = false;
    else
        askOwner();
}

bool DatagramReader::holds() const
{
    std::lock_guard<std::mutex> lock(m_mutex);
    return !m_held.empty();
}

void DatagramReader::askOwner()
{
    // Called with the mutex held. The call is queued to this object, which lives on the GUI
    // thread and is deleted only after the reading thread has ended.
    m_asked = true;
    QMetaObject::invokeMethod(
        this, [this] { m_ready(); }, Qt::QueuedConnection);
}

void DatagramReader::run()
{
    std::vector<char> buffers(size_t(ThreadBatch) * Largest);
    for (;;) {
        pollfd p[2] = {{m_fd, POLLIN, 0}, {m_wake, POLLIN, 0}};
        if (poll(p, 2, -1) < 0) {
            if (errno == EINTR)
                continue;
            return;
        }
        if (p[1].revents || (p[0].revents & POLLNVAL))
            return;
        // Read and held under the lock, so a datagram is always somewhere the GUI thread can
        // see: in the kernel's queue or among the held ones (holds()). The lock is let go
        // between two reads, so the GUI thread takes what is held even during a flood.
        for (bool empty = false; !empty;) {
            std::lock_guard<std::mutex> lock(m_mutex);
            empty = readKernel(buffers, ThreadBatch);
        }
    }
}

void DatagramReader::readHere()
{
    bool waiting = false;
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        if (m_hereBuffers.empty())
            m_hereBuffers.resize(size_t(HereBatch) * Largest);
        // What this read holds is handed on below, not through a queued call.
        const bool asked = m_asked;
        m_asked = true;
        readKernel(m_hereBuffers, HereBatch);
        waiting = !m_held.empty();
        if (!waiting)
            m_asked = asked;
    }
    // Handed on at once; a call the reading thread queued earlier finds the queue empty.
    if (waiting)
        m_ready();
}

bool DatagramReader::readKernel(std::vector<char> &buffers, int batch)
{
    sockaddr_in from[ThreadBatch];
    iovec iov[ThreadBatch];
    mmsghdr msgs[ThreadBatch];
    batch = std::min(batch, ThreadBatch);
    for (int i = 0; i < batch; ++i) {
        iov[i] = {buffers.data() + size_t(i) * Largest, size_t(Largest)};
        msgs[i] = {};
        msgs[i].msg_hdr.msg_name = &from[i];
        msgs[i].msg_hdr.msg_namelen = sizeof from[i];
        msgs[i].msg_hdr.msg_iov = &iov[i];
        msgs[i].msg_hdr.msg_iovlen = 1;
    }
    const int got = recvmmsg(m_fd, msgs, unsigned(batch), MSG_DONTWAIT, nullptr);
    // A failed read has consumed a pending error (a port unreachable, say), not a datagram;
    // only an empty queue means there is nothing more to read.
    if (got < 0)
        return errno == EAGAIN || errno == EWOULDBLOCK;
    hold(msgs, from, got);
    return false;
}

void DatagramReader::hold(const mmsghdr *msgs, const sockaddr_in *from, int count)
{
    // Called with the mutex held.
    for (int i = 0; i < count; ++i) {
        const int length = int(msgs[i].msg_len);
        // An empty datagram carries nothing to decode; it has been read, which is all it needs.
        if (length <= 0 || int(m_held.size()) >= m_limits.datagrams || m_heldBytes + length > m_limits.bytes)
            continue;
        const quint32 sender = ntohl(from[i].sin_addr.s_addr);
        if (m_limits.perSender > 0) {
            int &fromSender = m_heldFrom[sender];
            if (fromSender >= m_limits.perSender)
                continue;
            ++fromSender;
        }
        m_held.push_back({QHostAddress(sender),
                          QByteArray(static_cast<const char *>(msgs[i].msg_hdr.msg_iov->iov_base), length)});
        m_heldBytes += length;
    }
    if (!m_asked && !m_held.empty())
        askOwner();
}
