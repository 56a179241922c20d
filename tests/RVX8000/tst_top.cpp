// The 8000-series panels' title strip: dragging it moves the panel it heads (and nothing when it
// heads none), the minimise key minimises that panel, and the close key ends the application.
#include "RVX8000/top.h"

#include <QEventLoop>
#include <QMouseEvent>
#include <QPushButton>
#include <QtTest>

class TestTop : public QObject
{
    Q_OBJECT
private slots:
    void dragMovesThePanel();
    void minimiseKey();
    void closeKeyEndsTheApplication();
};

void TestTop::dragMovesThePanel()
{
    auto drag = [](QWidget *bar) {
        const QPoint from(20, 10), to(50, 22);
        QTest::mousePress(bar, Qt::LeftButton, Qt::NoModifier, from);
        QMouseEvent move(QEvent::MouseMove, to, bar->mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QApplication::sendEvent(bar, &move);
        QTest::mouseRelease(bar, Qt::LeftButton, Qt::NoModifier, to);
    };
    QWidget panel;
    panel.setGeometry(100, 100, 400, 300);
    auto *bar = new Top(&panel);
    bar->setGeometry(0, 0, 400, 40);
    panel.show();
    QVERIFY(QTest::qWaitForWindowExposed(&panel));
    const QPoint before = panel.pos();
    drag(bar);
    QCOMPARE(panel.pos(), before + QPoint(30, 12));
    QCOMPARE(bar->pos(), QPoint(0, 0));

    // A strip that heads no panel moves nothing and has nothing to minimise.
    Top alone;
    alone.setGeometry(50, 50, 400, 40);
    alone.show();
    QVERIFY(QTest::qWaitForWindowExposed(&alone));
    const QPoint was = alone.pos();
    drag(&alone);
    QCOMPARE(alone.pos(), was);
    alone.minKey()->click();
    QVERIFY(!alone.isMinimized());
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
