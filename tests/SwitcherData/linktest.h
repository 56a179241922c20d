#pragma once

// The RVX3210 family and the 8000 series share one reporting link: both tests open it, check
// commands on the wire and feed it replies the same way.

#include "testframes.h"
#include "wirecapture.h"

#include <QSignalSpy>
#include <QUdpSocket>
#include <QtTest>
#include <functional>
#include <memory>

// What follows the length in every frame to the main board (A5 FF) and to the HIS board (E0 FF).
#define TO_MAIN "a5ff01000000000000000000"
#define TO_HIS "e0ff01000000000000000000"

namespace LinkTest {

template <typename Link> using Call = std::function<void(Link &)>;

// The link on 127.0.0.1:7000, the unit's main board at 127.0.0.2, its HIS board at 127.0.0.3.
template <typename Link> struct Rig
{
    std::unique_ptr<Link> link;
    std::unique_ptr<WireCapture> main, his;

    bool open()
    {
        link = std::make_unique<Link>();
        link->get_DevTypeID("127.0.0.2", 0xA5, 0xFF);
        link->get_HISTypeID("127.0.0.3", 0xE0, 0xFF);
        main = std::make_unique<WireCapture>("127.0.0.2");
        his = std::make_unique<WireCapture>("127.0.0.3");
        return link->isBound() && main->isBound() && his->isBound();
    }
    void close()
    {
        main.reset();
        his.reset();
        link.reset();
    }
};

// A wire table row: the frames the call must send, in hex with a blank between frames.
template <typename Link> void wireRow(const char *name, const char *frames, Call<Link> call)
{
    QTest::newRow(name) << call << QByteArray(frames);
}

// The frames of the current row are shown and reach the board they are for (HIS frames carry
// class E0 at byte 4), and nothing reaches the other board.
template <typename Link> void checkOnTheWire(Rig<Link> &rig)
{
    QFETCH(Call<Link>, call);
    QFETCH(QByteArray, frames);
    const QByteArrayList expected = hexList(frames);
    QSignalSpy shown(rig.link.get(), &Link::showCurrentData);
    call(*rig.link);
    QByteArrayList shownFrames;
    for (const QList<QVariant> &args : shown)
        shownFrames << args.at(0).toByteArray();
    QCOMPARE(shownFrames, expected);

    // A CH1 level of 127 closes the main board's capture; once it is in, the HIS board has had
    // everything sent before it too.
    rig.link->SendCMDCH1_VOL(0x7F);
    const QByteArrayList main = rig.main->until(hex("a56c1500a5ff01000000000000000000ce7f1804ae"));
    const QByteArrayList his = rig.his->takeAll();
    const bool toHis = !expected.isEmpty() && expected[0].size() > 4 && uint8_t(expected[0].at(4)) == 0xE0;
    QCOMPARE(toHis ? his : main, expected);
    QVERIFY((toHis ? main : his).isEmpty());
}

// Sends the datagrams as the main board and waits until the link has read them all: loopback
// queues a datagram before the send returns.
template <typename Link> void deliver(Rig<Link> &rig, const QByteArrayList &datagrams)
{
    for (const QByteArray &d : datagrams)
        rig.main->reply(d);
    QTRY_VERIFY(!rig.link->endpoint()->hasPendingDatagrams() && !rig.link->holdsBack());
}

inline QStringList emits(const char *signal, const QByteArray &payload)
{
    return {QString::fromLatin1(signal) + ':' + QString::fromLatin1(payload.toHex())};
}

// Runs a decode row (columns datagrams, signals): what the link signals, in order, as
// "<signal>:<hex payload>".
template <typename Link> void checkDecode(Rig<Link> &rig)
{
    QFETCH(QByteArrayList, datagrams);
    QStringList got;
    QObject context;
    auto record = [&got](const char *name) {
        return [&got, name](const QByteArray &d) { got << emits(name, d); };
    };
    QObject::connect(rig.link.get(), &Link::on_signals_3210Data, &context, record("state"));
    QObject::connect(rig.link.get(), &Link::on_signals_5370Data, &context, record("serial"));
    QObject::connect(rig.link.get(), &Link::on_signals_3210HISData, &context, record("his"));
    QObject::connect(rig.link.get(), &Link::on_signals_3210HIS_URL_Data, &context, record("url"));
    QObject::connect(rig.link.get(), &Link::on_signals_3410Data, &context, record("3410"));
    QObject::connect(rig.link.get(), &Link::stateReported, &context, [&got, &rig](const UnitState &state) {
        got << QStringLiteral("decoded:%1%2")
                   .arg(QString::fromLatin1(state.record().toHex()),
                        rig.link->unitState() == state ? QString() : QStringLiteral(" not kept"));
    });
    deliver(rig, datagrams);
    // Each record is followed at once by its state, decoded and kept as the newest.
    // ("signals" is Qt's keyword: the column is read without QFETCH.)
    const auto listed = *static_cast<QStringList *>(QTest::qData("signals", qMetaTypeId<QStringList>()));
    QStringList expected;
    for (const QString &s : listed) {
        expected << s;
        if (s.startsWith(QLatin1String("state:")))
            expected << QLatin1String("decoded:") + s.mid(6);
    }
    QCOMPARE(got, expected);
}

inline QByteArray stateReply(const QByteArray &body)
{
    return reply(0xA5FF, 0x49, body);
}

// A long state reply cut into `pieces` at '#': the serial, an empty piece, then filler.
inline QByteArray longBody(const QByteArray &serial, int pieces)
{
    return "#" + serial + "##" + QByteArray("x#").repeated(pieces - 4);
}

} // namespace LinkTest
