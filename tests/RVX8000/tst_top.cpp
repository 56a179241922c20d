// The 8000-series panels' title strip: dragging it moves the panel it heads (and nothing when it
// heads none), the minimise key minimises that panel, and the close key ends the application.
#include "RVX8000/top.h"

#include <QEventLoop>
#include <QMouseEvent>
#include <QPushButton>
#include <QTimer>
#include <QtTest>

class TestTop : public QObject
{
    Q_OBJECT
private slots:
    void dragMovesThePanel();
    void dragWithoutPanelMovesNothing();
    void minimiseKey();
    void closeKeyEndsTheApplication();

private:
    static void drag(QWidget *bar, QPoint by);
};

void TestTop::drag(QWidget *bar, QPoint by)
{
    const QPoint from(20, 10);
    QTest::mousePress(bar, Qt::LeftButton, Qt::NoModifier, from);
    QMouseEvent move(QEvent::MouseMove, from + by, bar->mapToGlobal(from + by), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(bar, &move);
    QTest::mouseRelease(bar, Qt::LeftButton, Qt::NoModifier, from + by);
}

void TestTop::dragMovesThePanel()
{
    QWidget panel;
    panel.resize(400, 300);
    panel.move(100, 100);
    auto *bar = new Top(&panel);
    bar->setGeometry(0, 0, 400, 40);
    panel.show();
    QVERIFY(QTest::qWaitForWindowExposed(&panel));
    const QPoint before = panel.pos();
    drag(bar, {30, 12});
    QCOMPARE(panel.pos(), before + QPoint(30, 12));
    QCOMPARE(bar->pos(), QPoint(0, 0));
}

void TestTop::dragWithoutPanelMovesNothing()
{
    Top bar;
    bar.resize(400, 40);
    bar.move(50, 50);
    bar.show();
    QVERIFY(QTest::qWaitForWindowExposed(&bar));
    const QPoint before = bar.pos();
    drag(&bar, {30, 12});
    QCOMPARE(bar.pos(), before);
    // The minimise key has nothing to minimise either.
    bar.minKey()->click();
    QVERIFY(!bar.isMinimized());
}

void TestTop::minimiseKey()
{
    QWidget panel;
    auto *bar = new Top(&panel);
    panel.show();
    bar->minKey()->click();
    QTRY_VERIFY(panel.isMinimized());
}

void TestTop::closeKeyEndsTheApplication()
{
    QWidget panel;
    auto *bar = new Top(&panel);
    panel.show();
    // The application's exit ends every event loop running, this one included, with code 0.
    QEventLoop loop;
    QTimer::singleShot(0, bar->closeKey(), &QPushButton::click);
    QTimer::singleShot(5000, &loop, [&loop] { loop.exit(99); });
    QCOMPARE(loop.exec(), 0);
    QVERIFY(panel.isVisible());
}

QTEST_MAIN(TestTop)
#include "tst_top.moc"
