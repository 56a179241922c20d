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

// Resource references found in one text: whole paths, prefixes that code completes at
// run time (":/images/white/" + name), and printf-style templates (".../png/%1.png").
struct References
{
    QStringList paths;
    QStringList prefixes;
    QStringList templates;
};

// C++ splits long style sheets over adjacent literals; join them so a path broken
// across two lines is seen whole.
QStringList joinedStringLiterals(const QString &code)
{
    static const QRegularExpression literal(QStringLiteral("\"((?:[^\"\\\\\\n]|\\\\.)*)\""));
    static const QRegularExpression blank(QStringLiteral("^\\s*$"));
    QStringList out;
    int lastEnd = -1;
    auto it = literal.globalMatch(code);
    while (it.hasNext()) {
        const QRegularExpressionMatch m = it.next();
        const bool adjacent =
            lastEnd >= 0 && blank.match(code.mid(lastEnd, m.capturedStart() - lastEnd)).hasMatch();
        if (adjacent)
            out.last() += m.captured(1);
        else
            out.append(m.captured(1));
        lastEnd = m.capturedEnd();
    }
    return out;
}

void addReferences(const QString &text, References *refs)
{
    // A path ends where a style sheet or a literal would end it.
    static const QRegularExpression path(QStringLiteral(":/images/[^\"'()\\s;,<>\\\\]*"));
    auto it = path.globalMatch(text);
    while (it.hasNext()) {
        const QString p = it.next().captured(0);
        QStringList *list = p.contains(QLatin1Char('%'))   ? &refs->templates
                            : p.endsWith(QLatin1Char('/')) ? &refs->prefixes
                                                           : &refs->paths;
        if (!list->contains(p))
            list->append(p);
    }
}

References scanText(const QString &text, bool isCpp)
{
    References refs;
    if (isCpp) {
        for (const QString &s : joinedStringLiterals(text))
            addReferences(s, &refs);
    } else {
        addReferences(text, &refs);
    }
    return refs;
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

ImageTable loadTable()
{
    return ImageTable::load(QStringLiteral(KOVA_IMAGE_TABLE_FILE));
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
    void lampColours_data();
    void lampColours();
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
    const ImageTable table = loadTable();
    QVERIFY2(table.isValid(), qPrintable(table.error()));
    QVERIFY(!table.entries().isEmpty());
    for (const ImageEntry &e : table.entries())
        QTest::newRow(qPrintable(e.path)) << e.path << e.size << e.format();
}

void TestResources::tableEntries()
{
    QFETCH(QString, path);
    QFETCH(QSize, size);
    QFETCH(QString, format);
    const QString failure = loadFailure(path);
    QVERIFY2(failure.isEmpty(), qPrintable(failure));
    // The extension is what a reader of the code expects; the bytes must agree with it.
    QImageReader reader(path);
    reader.setAutoDetectImageFormat(true);
    QCOMPARE(QString::fromLatin1(reader.format()), format);
    QCOMPARE(QImage(path).size(), size);
}

void TestResources::lampColours_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("lamp");
    const ImageTable table = loadTable();
    QVERIFY2(table.isValid(), qPrintable(table.error()));
    for (const ImageEntry &e : table.entries()) {
        if (e.kind == QLatin1String("key"))
            QTest::newRow(qPrintable(e.path)) << e.path << e.scheme;
    }
}

// An unlit key shown lit, or a programme key painted green, is the mistake an operator
// would act on, so the face colour is checked against the directory it lives in.
void TestResources::lampColours()
{
    QFETCH(QString, path);
    QFETCH(QString, lamp);
    const QImage image = QImage(path).convertToFormat(QImage::Format_RGB32);
    QVERIFY(!image.isNull());
    if (path.contains(QLatin1String("/white/")))
        QCOMPARE(lamp, QStringLiteral("white"));
    else if (path.contains(QLatin1String("/red/")))
        QCOMPARE(lamp, QStringLiteral("red"));
    else if (path.contains(QLatin1String("/green/")))
        QCOMPARE(lamp, QStringLiteral("green"));

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
    QDirIterator it(
        tree.absolutePath(),
        {QStringLiteral("*.cpp"), QStringLiteral("*.h"), QStringLiteral("*.ui"), QStringLiteral("*.qss")},
        QDir::Files, QDirIterator::Subdirectories);
    QStringList failures;
    while (it.hasNext()) {
        const QString file = it.next();
        QFile f(file);
        QVERIFY2(f.open(QIODevice::ReadOnly), qPrintable(file));
        const bool isCpp = !file.endsWith(QLatin1String(".ui")) && !file.endsWith(QLatin1String(".qss"));
        const References refs = scanText(QString::fromUtf8(f.readAll()), isCpp);
        const QString where = tree.relativeFilePath(file) + QLatin1String(": ");
        for (const QString &p : refs.paths) {
            const QString failure = loadFailure(p);
            if (!failure.isEmpty())
                failures << where + failure;
        }
        for (const QString &p : refs.prefixes) {
            if (QDir(p).entryList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot).isEmpty())
                failures << where + p + QLatin1String(": no pictures under this prefix");
        }
        for (const QString &t : refs.templates) {
            // Only the directory and the shape of the name can be checked statically.
            const QString dir = t.left(t.lastIndexOf(QLatin1Char('/'), t.indexOf(QLatin1Char('%'))) + 1);
            QString pattern = t.mid(dir.size());
            pattern.replace(QRegularExpression(QStringLiteral("%\\d+")), QStringLiteral("*"));
            if (QDir(dir).entryList({pattern}, QDir::Files).isEmpty())
                failures << where + t + QLatin1String(": no picture matches this pattern");
        }
    }
    QVERIFY2(failures.isEmpty(), qPrintable(failures.join(QLatin1Char('\n'))));
}

QTEST_MAIN(TestResources)
#include "tst_resources.moc"
