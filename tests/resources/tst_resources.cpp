#include "imagetable.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QPixmap>
#include <QRegularExpression>
#include <QtTest>

namespace {

// Resource paths named in a text: whole paths, prefixes the code completes at run time
// (":/images/white/" + name) and templates (".../png/%1.png"). C++ splits long style sheets
// over adjacent literals, so those are joined first and a path broken across lines is seen whole.
QStringList resourcePaths(const QString &text, bool isCpp)
{
    static const QRegularExpression literal(QStringLiteral("\"((?:[^\"\\\\\\n]|\\\\.)*)\"\\s*"));
    static const QRegularExpression path(QStringLiteral(":/images/[^\"'()\\s;,<>\\\\]*"));
    QStringList texts{text};
    if (isCpp) {
        texts.clear();
        int lastEnd = -1;
        for (auto it = literal.globalMatch(text); it.hasNext();) {
            const QRegularExpressionMatch m = it.next();
            if (m.capturedStart() == lastEnd)
                texts.last() += m.captured(1);
            else
                texts << m.captured(1);
            lastEnd = m.capturedEnd();
        }
    }
    QStringList out;
    for (const QString &t : texts)
        for (auto it = path.globalMatch(t); it.hasNext();)
            out << it.next().captured(0);
    out.removeDuplicates();
    return out;
}

QString loadFailure(const QString &path)
{
    QImageReader reader(path);
    const QImage image = reader.read();
    if (image.isNull())
        return QStringLiteral("%1: %2").arg(path, reader.errorString());
    if (QPixmap(path).isNull())
        return QStringLiteral("%1: loads as an image but not as a pixmap").arg(path);
    return QString();
}

} // namespace

class TestResources : public QObject
{
    Q_OBJECT

private slots:
    void tableParser_data();
    void tableParser();
    void tableEntries_data();
    void tableEntries();
    void sourceReferences();
};

void TestResources::tableParser_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("entries");
    QTest::addColumn<QString>("error"); // fragment of the message, empty when valid

    QTest::newRow("comments and blanks") << "# c\n\n  \n:/images/a.png icon light 4x4 close\n" << 1 << "";
    QTest::newRow("legend keeps inner blanks")
        << ":/images/l.png logo - 40x10 VIDEO SWITCHER CONTROL" << 1 << "";
    QTest::newRow("case variants are distinct")
        << ":/images/white/UP.bmp key white 8x8 @up\n:/images/white/up.bmp key white 8x8 @up" << 2 << "";
    QTest::newRow("exact repeat") << ":/images/a.png icon light 4x4 x\n:/images/a.png icon light 4x4 x" << 0
                                  << "line 2: duplicate";
    QTest::newRow("missing size") << ":/images/a.png icon light close" << 0 << "line 1:";
    QTest::newRow("unknown kind") << ":/images/a.png sticker light 4x4" << 0 << "unknown kind";
    QTest::newRow("unwritten format") << ":/images/a.jpg icon light 4x4" << 0 << ".png and .bmp";
    QTest::newRow("not a resource path") << "images/a.png icon light 4x4" << 0 << "must start";
    QTest::newRow("zero size") << ":/images/a.png icon light 0x4" << 0 << "size";
}

void TestResources::tableParser()
{
    QFETCH(QString, text);
    QFETCH(int, entries);
    QFETCH(QString, error);
    const ImageTable table = ImageTable::parse(text);
    if (error.isEmpty()) {
        QVERIFY2(table.isValid(), qPrintable(table.error()));
        QCOMPARE(table.entries().size(), entries);
    } else {
        QVERIFY(!table.isValid());
        QVERIFY2(table.error().contains(error), qPrintable(table.error()));
    }
}

void TestResources::tableEntries_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("lamp"); // a key's colour, empty for other pictures
    const ImageTable table = ImageTable::load(QStringLiteral(KOVA_IMAGE_TABLE_FILE));
    QVERIFY2(table.isValid(), qPrintable(table.error()));
    QVERIFY(!table.entries().isEmpty());
    for (const ImageEntry &e : table.entries())
        QTest::newRow(qPrintable(e.path))
            << e.path << e.size << e.format() << (e.kind == QLatin1String("key") ? e.scheme : QString());
}

// Every picture loads, its bytes agree with its extension, and a key's face has the colour of
// the directory it lives in: an unlit key shown lit, or a programme key painted green, is the
// mistake an operator would act on.
void TestResources::tableEntries()
{
    QFETCH(QString, path);
    QFETCH(QSize, size);
    QFETCH(QString, format);
    QFETCH(QString, lamp);
    const QString failure = loadFailure(path);
    QVERIFY2(failure.isEmpty(), qPrintable(failure));
    QImageReader reader(path);
    reader.setAutoDetectImageFormat(true);
    QCOMPARE(QString::fromLatin1(reader.format()), format);
    const QImage image = QImage(path).convertToFormat(QImage::Format_RGB32);
    QCOMPARE(image.size(), size);
    if (lamp.isEmpty())
        return;
    for (const QString dir : {"white", "red", "green"})
        if (path.contains(QLatin1Char('/') + dir + QLatin1Char('/')))
            QCOMPARE(lamp, dir);

    // Count the face's pixels by lamp colour; the legend and the rim are a minority.
    int white = 0, red = 0, green = 0;
    for (int y = image.height() / 5; y < image.height() * 4 / 5; ++y) {
        for (int x = image.width() / 5; x < image.width() * 4 / 5; ++x) {
            const QColor c = image.pixelColor(x, y);
            if (c.saturation() < 40 && c.value() > 150)
                ++white;
            else if (c.red() > 150 && c.red() > 2 * c.green() && c.red() > 2 * c.blue())
                ++red;
            else if (c.green() > 150 && c.green() > 2 * c.red() && c.green() > 2 * c.blue())
                ++green;
        }
    }
    const QString counts = QStringLiteral("white %1, red %2, green %3").arg(white).arg(red).arg(green);
    const int expected = lamp == QLatin1String("white") ? white : lamp == QLatin1String("red") ? red : green;
    QVERIFY2(expected == qMax(white, qMax(red, green)) && expected > image.width() * image.height() / 8,
             qPrintable(counts));
}

void TestResources::sourceReferences()
{
    const QDir tree(QStringLiteral(KOVA_SOURCE_TREE));
    QVERIFY2(tree.exists(), KOVA_SOURCE_TREE);
    QDirIterator it(tree.absolutePath(), {"*.cpp", "*.h", "*.ui", "*.qss"}, QDir::Files,
                    QDirIterator::Subdirectories);
    QStringList failures;
    int seen = 0;
    while (it.hasNext()) {
        const QString file = it.next();
        QFile f(file);
        QVERIFY2(f.open(QIODevice::ReadOnly), qPrintable(file));
        const bool isCpp = !file.endsWith(QLatin1String(".ui")) && !file.endsWith(QLatin1String(".qss"));
        const QString where = tree.relativeFilePath(file) + QLatin1String(": ");
        for (const QString &p : resourcePaths(QString::fromUtf8(f.readAll()), isCpp)) {
            ++seen;
            QString failure;
            if (p.contains(QLatin1Char('%'))) {
                // Of a template, only the directory and the shape of the name can be checked.
                const QString dir = p.left(p.lastIndexOf(QLatin1Char('/'), p.indexOf(QLatin1Char('%'))) + 1);
                QString pattern = p.mid(dir.size());
                pattern.replace(QRegularExpression(QStringLiteral("%\\d+")), QStringLiteral("*"));
                if (QDir(dir).entryList({pattern}, QDir::Files).isEmpty())
                    failure = p + QLatin1String(": no picture matches this pattern");
            } else if (p.endsWith(QLatin1Char('/'))) {
                if (QDir(p).entryList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot).isEmpty())
                    failure = p + QLatin1String(": no pictures under this prefix");
            } else {
                failure = loadFailure(p);
            }
            if (!failure.isEmpty())
                failures << where + failure;
        }
    }
    QVERIFY(seen > 50); // a scan that found nothing checked nothing
    QVERIFY2(failures.isEmpty(), qPrintable(failures.join(QLatin1Char('\n'))));
}

QTEST_MAIN(TestResources)
#include "tst_resources.moc"
