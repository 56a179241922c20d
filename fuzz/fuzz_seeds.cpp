// Writes the seed corpus of every fuzz target from the frames the tests write out as literal
// hex: every string literal in tests/ that holds twenty or more hex bytes. Frames (A5 6C ...)
// are taken as they are; shorter runs that are not frames are state records, wrapped into the
// short and long state replies a unit sends. Each frame is also written split where the
// emulator's split fault cuts it, and joined with a neighbour, so the reassembly paths start
// covered. Search replies come from the tests' own builder.
//
//   fuzz_seeds TESTS_DIR OUT_DIR     writes OUT_DIR/<target>/seed-NNNN
#include "datagrams.h"
#include "testframes.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <cstdio>

namespace {

bool isFrame(const QByteArray &b)
{
    return b.size() >= 20 && uint8_t(b.at(0)) == 0xA5 && uint8_t(b.at(1)) == 0x6C;
}

// Every hex literal of twenty bytes or more in the tests, frames first and then records.
void literals(const QString &testsDir, QList<QByteArray> *frames, QList<QByteArray> *records)
{
    const QRegularExpression literal(QStringLiteral("\"((?:[0-9a-fA-F]{2} ?){20,})\""));
    QSet<QByteArray> seen;
    QStringList files;
    QDirIterator it(testsDir, {QStringLiteral("*.cpp"), QStringLiteral("*.h")}, QDir::Files,
                    QDirIterator::Subdirectories);
    while (it.hasNext())
        files << it.next();
    files.sort(); // the same corpus on every machine
    for (const QString &path : files) {
        QFile f(path);
        if (!f.open(QIODevice::ReadOnly))
            continue;
        const QString text = QString::fromUtf8(f.readAll());
        for (auto m = literal.globalMatch(text); m.hasNext();) {
            const QByteArray h = m.next().captured(1).toLatin1();
            QList<QByteArray> parts = hexList(h);
            bool allFrames = true;
            for (const QByteArray &p : parts)
                allFrames = allFrames && isFrame(p);
            if (!allFrames)
                parts = {QByteArray::fromHex(h)};
            for (const QByteArray &p : parts) {
                if (seen.contains(p))
                    continue;
                seen.insert(p);
                (isFrame(p) ? frames : records)->append(p);
            }
        }
    }
}

QByteArray shortState(const QByteArray &record, uint8_t childType)
{
    return reply(0xA5FF, 0x49, "#\x01#" + record + "#", childType);
}

// The long form: an empty third piece, the record in piece 17.
QByteArray longState(const QByteArray &record)
{
    return reply(0xA5FF, 0x49, "#\x01#" + QByteArray(15, '#') + record + "#");
}

class Writer
{
public:
    explicit Writer(const QString &dir) : m_dir(dir) { QDir().mkpath(dir); }
    void add(const QByteArray &input)
    {
        QFile f(m_dir + QStringLiteral("/seed-%1").arg(m_n++, 4, 10, QLatin1Char('0')));
        if (f.open(QIODevice::WriteOnly))
            f.write(input);
    }
    int count() const { return m_n; }

private:
    QString m_dir;
    int m_n = 0;
};

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() != 3) {
        std::fprintf(stderr, "usage: fuzz_seeds TESTS_DIR OUT_DIR\n");
        return 2;
    }
    QList<QByteArray> frames, records;
    literals(args.at(1), &frames, &records);
    if (frames.isEmpty()) {
        std::fprintf(stderr, "no frames found under %s\n", qPrintable(args.at(1)));
        return 1;
    }
    for (const QByteArray &r : records)
        frames << shortState(r, 0) << shortState(r, 0x27) << longState(r);

    // Datagram sequences: each frame alone, split at byte 19, and joined with the next one;
    // a stall followed by a good reply.
    using FuzzDatagrams::join;
    QList<QByteArray> sequences;
    for (int i = 0; i < frames.size(); ++i) {
        const QByteArray &f = frames.at(i);
        sequences << join({f}) << join({f.left(19), f.mid(19)})
                  << join({f + frames.at((i + 1) % frames.size())});
    }
    sequences << join({hex("a56cffff") + QByteArray(1100, '\0'), frames.first()});

    const QString out = args.at(2);
    Writer discovery(out + "/fuzz_discovery");
    const QByteArray id = hex("0a0b0c");
    discovery.add(
        join({searchReply(0xA5, 0x21, "Studio A-V1.00", id), searchReply(0xE0, 0x21, "Studio A-V1.00", id)}));
    discovery.add(join({searchReply(0xE5, 0x27, "Desk-1", id), searchReply(0xA5, 0x27, "Desk-1", id)}));
    discovery.add(join(
        {searchReply(0xA5, 0x22, "Halves-1", id).left(19), searchReply(0xA5, 0x22, "Halves-1", id).mid(19)}));
    for (const QByteArray &s : sequences)
        discovery.add(s);

    for (const char *target : {"fuzz_rvx3210_link", "fuzz_rvx5all_link", "fuzz_rvx3220_link"}) {
        Writer w(out + "/" + target);
        for (const QByteArray &s : sequences)
            w.add(s);
    }

    // One byte picks the panel family (see fuzz_panel_fanout.cpp), one frame after it.
    Writer panels(out + "/fuzz_panel_fanout");
    for (char family = 0; family < 3; ++family)
        for (const QByteArray &f : frames)
            panels.add(char(family) + join({f}));

    // The emulator hears what the panels send: every frame, at each family's main board and
    // at the HIS board.
    Writer emulator(out + "/fuzz_emulator");
    for (uint8_t childType : {0x21, 0x22, 0x27})
        for (char board = 0; board < 2; ++board)
            for (const QByteArray &f : frames)
                emulator.add(char(childType) + QByteArray(1, board) + join({f}));

    // OSC datagrams as a surface sends them: commands with and without arguments, a pattern,
    // and a bundle of two.
    Writer osc(out + "/fuzz_osc");
    const QByteArray cut("/kova/cut\0\0\0,\0\0\0", 16);
    const QByteArray pgm("/kova/pgm\0\0\0,i\0\0\0\0\0\x02", 20);
    osc.add(cut);
    osc.add(pgm);
    osc.add(QByteArray("/kova/fader\0,f\0\0\x3f\0\0\0", 20));
    osc.add(QByteArray("/kova/transition\0\0\0\0,s\0\0mix\0", 28));
    osc.add(QByteArray("/kova/p?p\0\0\0,i\0\0\0\0\0\x01", 20));
    osc.add(QByteArray("/kova/state\0,\0\0\0", 16));
    osc.add(QByteArray("#bundle\0\0\0\0\0\0\0\0\x01\0\0\0\x10", 20) + cut + QByteArray("\0\0\0\x14", 4) +
            pgm);

    // kova-hub's config file, and commands as MQTT brings them, good and bad.
    Writer hub(out + "/fuzz_hub");
    hub.add("# hub\n[hub]\nunit = 10.0.0.1, 10.0.0.2\nall = yes\nfollow = 500\nosc-port = 9000\n"
            "tsl = 127.0.0.1:9100\ntsl-offset = 10.0.0.2=100\nmqtt = mqtts://kova@broker:8883\nstation = "
            "\"a-1\"\n");
    hub.add("pgm 3\ncut\ntransition wipe-left\npip on\ntbar 0 128\nurl 1 name rtmp://x\n");
    hub.add("his-address 10.0.0.9 255.255.255.0 10.0.0.1\nmenu up press\nlevels 1 2 0 3\npgm bar\n");

    std::printf("%d frames and %d records from the tests; seeds written to %s\n",
                int(frames.size() - 3 * records.size()), int(records.size()), qPrintable(out));
    return 0;
}
