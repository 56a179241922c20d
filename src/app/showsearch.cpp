#include "showsearch.h"

#include "SwitcherData/workdata.h"
#include "common/centre.h"
#include "common/panelclose.h"
#include "common/windowdrag.h"
#include "globaldev.h"
#include "groupbox_right.h"
#include "live/liveoptions.h"
#include "livesettingsdialog.h"
#include "searchstyles.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPainter>
#include <QScreen>
#include <QSettings>
#include <QShortcut>
#include <QSpacerItem>
#include <QTimer>
#include <QVBoxLayout>
#include <cstdio>
#include <cstring>

uint8_t GLOBAL_DEV_CHILD_TYPE = 0;

namespace {

constexpr int TitleBand = 30;

QString recordName(const DevInfo_DATA &rec)
{
    return QString::fromLatin1(rec.name, int(strnlen(rec.name, sizeof(rec.name))));
}

QString recordText(const DevInfo_DATA &rec, ModelFilter filter)
{
    const QString address = SWITCHER_DATA::dottedIp(rec.ip);
    if (filter == ModelFilter::All)
        return recordName(rec) + QStringLiteral(": ") + address;
    return UnitModels::filterLabel(rec.childType) + address;
}

} // namespace

showsearch::showsearch(QWidget *parent) : QWidget(parent)
{
    setWindowIcon(QIcon(QString::fromLatin1(SearchStyles::WindowIcon)));
    centreWindow(this, {475, 395}, CentreOn::WholeDesktop);
    setWindowFlags(Qt::FramelessWindowHint);
    setAttribute(Qt::WA_TranslucentBackground);
    setObjectName(QStringLiteral("widget"));
    // A press anywhere arms the drag, but only the 30 px title band moves the window.
    WindowDrag::install(this, WindowDrag::Target::Handle, TitleBand);
    init();
}

void showsearch::init()
{
    auto *settings = new QShortcut(QKeySequence(QStringLiteral("Ctrl+,")), this);
    connect(settings, &QShortcut::activated, this, &showsearch::showLiveSettings);
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(3, 3, 3, 3);

    m_titleBar = new QWidget(this);
    m_titleBar->setFixedSize(490, 30);

    m_list = new QListWidget(this);
    QFont font = m_list->font();
    font.setPointSize(15);
    font.setBold(true);
    font.setWeight(QFont::Normal);
    m_list->setFont(font);
    m_list->setStyleSheet(QString::fromLatin1(SearchStyles::List));
    // Every row is one line of the same font: laying out a thousand rows then costs one.
    m_list->setUniformItemSizes(true);
    m_list->setItemAlignment(Qt::AlignHCenter | Qt::AlignVCenter);

    m_groupBox = new GroupBox_right(this, m_list);
    m_link = new SWITCHER_DATA(this);

    connect(m_link, &SWITCHER_DATA::sigend_datapack, this, &showsearch::m_on_ReceiveDatagram);
    init2();

    auto *row = new QHBoxLayout;
    row->addWidget(m_list, 6);
    row->addWidget(m_groupBox, 1);
    outer->addWidget(m_titleBar);
    outer->addLayout(row);
    // Shown only when there is something to say (a unit asked for with --open that did not
    // answer), so the window is laid out as always otherwise.
    m_note = new QLabel(this);
    m_note->setObjectName(QStringLiteral("note"));
    m_note->setWordWrap(true);
    m_note->setStyleSheet(QStringLiteral("color:rgb(230,170,60);"));
    m_note->hide();
    outer->addWidget(m_note);
    m_awaitTick.setInterval(50);
    connect(&m_awaitTick, &QTimer::timeout, this, &showsearch::openAwaited);

    connect(m_list, &QListWidget::itemDoubleClicked, this, &showsearch::m_on_liswidget_clicked);
    // Return on the chosen entry opens it as a double-click does. Not through the list's
    // activated signal: a double-click emits that as well and would open the panel twice.
    m_list->installEventFilter(this);
    connect(m_groupBox, &GroupBox_right::btnScan_clicked, this, &showsearch::m_on_SendCMD_Scan);
    connect(m_groupBox, &GroupBox_right::btnGrp_clicked, this, &showsearch::m_on_Radbtn_select);
    connect(m_groupBox, &GroupBox_right::btn5120_clicked, this, &showsearch::set5120UI);
}

void showsearch::init2()
{
    auto *bar = new QHBoxLayout(m_titleBar);
    bar->setContentsMargins(0, 0, 0, 0);
    auto *logo = new QLabel(m_titleBar);
    logo->setFixedSize(200, 35);
    logo->setStyleSheet(QString::fromLatin1(SearchStyles::Logo));
    bar->addWidget(logo);
    bar->addItem(new QSpacerItem(40, 20, QSizePolicy::Expanding, QSizePolicy::Minimum));
    m_titleBar->setAttribute(Qt::WA_StyledBackground);
    m_titleBar->setStyleSheet(QString::fromLatin1(SearchStyles::TitleBar));
    // The first search leaves while the window is still being built.
    m_on_SendCMD_Scan();
}

void showsearch::m_on_SendCMD_Scan()
{
    m_list->clear();
    m_listedAll = 0;
    m_groupBox->on_Radiobtn_checked(true);
    m_link->setSearcheQuipment();
}

void showsearch::m_on_ReceiveDatagram()
{
    // Replies come in bursts, many per pass of the event loop; the list is brought up to
    // date once per pass, which shows the operator the same list as a rebuild per reply.
    if (m_updatePending)
        return;
    m_updatePending = true;
    QTimer::singleShot(0, this, [this] {
        m_updatePending = false;
        appendNewRecords();
    });
}

void showsearch::appendNewRecords()
{
    const int count = m_link->DevInfo_DATA_IDX();
    if (m_listedAll < 0 || m_listedAll > count || m_list->count() != m_listedAll) {
        setBtnall();
        return;
    }
    const DevInfo_DATA *devices = m_link->devices();
    for (int i = m_listedAll; i < count; ++i)
        m_list->addItem(recordText(devices[i], ModelFilter::All));
    m_listedAll = count;
    setliswidget_ItemAlignment();
}

void showsearch::m_on_Radbtn_select(int id)
{
    switch (id) {
    case 0:
        setBtnall();
        break;
    case 1:
        setBtn3210();
        break;
    case 2:
        setBtn3220();
        break;
    default:
        // The RVX5370 filter leaves the list as it is.
        break;
    }
}

void showsearch::rebuild(int filter)
{
    const auto f = ModelFilter(filter);
    m_list->clear();
    const int count = m_link->DevInfo_DATA_IDX();
    const DevInfo_DATA *devices = m_link->devices();
    for (int i = 0; i < count; ++i) {
        if (UnitModels::admits(f, devices[i].childType))
            m_list->addItem(recordText(devices[i], f));
    }
    m_listedAll = f == ModelFilter::All ? count : -1;
    setliswidget_ItemAlignment();
}

void showsearch::setBtnall()
{
    rebuild(int(ModelFilter::All));
}

void showsearch::setBtn3210()
{
    rebuild(int(ModelFilter::Rvx3210));
}

void showsearch::setBtn3220()
{
    rebuild(int(ModelFilter::Rvx3220));
}

void showsearch::setliswidget_ItemAlignment()
{
    m_list->sortItems(Qt::AscendingOrder);
    for (int i = 0; i < m_list->count(); ++i)
        m_list->item(i)->setTextAlignment(Qt::AlignHCenter | Qt::AlignVCenter);
}

bool showsearch::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_list && event->type() == QEvent::KeyPress) {
        auto *press = static_cast<QKeyEvent *>(event);
        if (press->key() == Qt::Key_Return || press->key() == Qt::Key_Enter) {
            // A held key opens once.
            if (!press->isAutoRepeat())
                m_on_liswidget_clicked();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void showsearch::m_on_liswidget_clicked()
{
    QListWidgetItem *item = m_list->currentItem();
    if (!item)
        return;
    const QList<QByteArray> pieces = item->text().toLatin1().split(' ');
    if (pieces.size() < 2)
        return;
    const QString address = QString::fromLatin1(pieces.at(1));

    // Up to and including count: the record after the last is all zero and matches nothing
    // listed. The table may be emptied by a launcher (a modal panel re-searches when it
    // closes), so the count is read again on every step.
    for (int i = 0; i <= m_link->DevInfo_DATA_IDX() && i <= SWITCHER_DATA::MaxDevices; ++i) {
        const DevInfo_DATA rec = m_link->devices()[i];
        if (SWITCHER_DATA::dottedIp(rec.ip) != address)
            continue;
        GLOBAL_DEV_CHILD_TYPE = rec.childType;
        openPanel(UnitModels::forChildType(rec.childType).panel, UnitAddress::mainBoard(rec),
                  UnitAddress::hisBoard(rec));
    }
}

void showsearch::openPanel(PanelKind panel, const UnitAddress &unit, const UnitAddress &his)
{
    if (QWidget *open = openPanelOf(unit.text())) {
        // Side by side, a unit has one window: opening it again brings that window up.
        open->show();
        open->raise();
        open->activateWindow();
        return;
    }
    switch (panel) {
    case PanelKind::Rvx3210:
        return open3210(unit, his);
    case PanelKind::Rvx3410:
        return open3410(unit, his);
    case PanelKind::Rvx3220:
        return open3220(unit);
    case PanelKind::Rvx5310:
        return open5310(unit, his);
    case PanelKind::Rvx5370:
        return open5370(unit, his);
    case PanelKind::Rvx5350:
        return open5350(unit, his);
    case PanelKind::Rvx5120:
        return set5120UI();
    }
}

void showsearch::showLiveSettings()
{
    QSettings settings{QString::fromLatin1(LiveOptions::Organisation),
                       QString::fromLatin1(LiveOptions::Application)};
    LiveSettingsDialog dialog(settings, this);
    dialog.exec();
}

void showsearch::openWhenFound(const QStringList &addresses)
{
    // Numbered in the order given, whatever order the units answer in.
    int number = 0;
    for (const QString &address : addresses)
        m_awaited.append({address, ++number, -1});
    m_awaitClock.start();
    m_awaitTick.start();
}

void showsearch::openAwaited()
{
    // Each awaited unit opens once its main board has answered and its HIS board too, or half
    // a second after the main board for a unit that has none: the same record a double-click
    // would find a moment later.
    constexpr qint64 HisGraceMs = 500;
    const qint64 now = m_awaitClock.elapsed();
    for (int i = 0; i < m_awaited.size();) {
        Awaited &a = m_awaited[i];
        const DevInfo_DATA *found = nullptr;
        for (int r = 0; r < m_link->DevInfo_DATA_IDX() && !found; ++r)
            if (SWITCHER_DATA::dottedIp(m_link->devices()[r].ip) == a.address)
                found = &m_link->devices()[r];
        if (found && a.seenAt < 0)
            a.seenAt = now;
        if (found && (found->ip2 || now - a.seenAt >= HisGraceMs)) {
            const DevInfo_DATA rec = *found;
            GLOBAL_DEV_CHILD_TYPE = rec.childType;
            // Opened with its reserved number, then no longer awaited.
            openPanel(UnitModels::forChildType(rec.childType).panel, UnitAddress::mainBoard(rec),
                      UnitAddress::hisBoard(rec));
            m_awaited.removeAt(i);
            continue;
        }
        if (!found && now >= OpenWaitMs) {
            const QString text =
                tr("No unit answered from %1 within %2 s.").arg(a.address).arg(OpenWaitMs / 1000);
            std::fprintf(stderr, "kova: %s\n", qPrintable(text));
            showNote(text);
            m_awaited.removeAt(i);
            continue;
        }
        ++i;
    }
    if (m_awaited.isEmpty())
        m_awaitTick.stop();
}

void showsearch::showNote(const QString &text)
{
    const QString shown = m_note->text();
    m_note->setText(shown.isEmpty() ? text : shown + QLatin1Char('\n') + text);
    m_note->show();
}

QString showsearch::note() const
{
    return m_note->text();
}

QWidget *showsearch::openPanelOf(const QString &address) const
{
    const quint32 ip = QHostAddress(address).toIPv4Address();
    for (const OpenPanel &p : m_open)
        if (p.ip == ip && p.panel)
            return p.panel;
    return nullptr;
}

int showsearch::takeNumber(const UnitAddress &unit) const
{
    for (const Awaited &a : m_awaited)
        if (QHostAddress(a.address) == unit.host)
            return a.number;
    // The smallest number no open panel has and no awaited unit holds: a unit opened alone is
    // always number 1.
    for (int n = 1;; ++n) {
        bool taken = false;
        for (const OpenPanel &p : m_open)
            taken = taken || (p.number == n && p.panel);
        for (const Awaited &a : m_awaited)
            taken = taken || a.number == n;
        if (!taken)
            return n;
    }
}

bool showsearch::presentBeside(QWidget *panel, UnitLink *link, PanelKind kind, const UnitAddress &unit)
{
    if (!m_sideBySide) {
        emit panelOpened(panel, link, kind, GLOBAL_DEV_CHILD_TYPE, 1);
        return false;
    }
    const int number = takeNumber(unit);
    panel->setAttribute(Qt::WA_DeleteOnClose);
    PanelClose::setClosesAlone(panel, true);
    panel->setWindowTitle(QStringLiteral("%1 \u00b7 %2 %3")
                              .arg(number)
                              .arg(UnitModels::modelName(GLOBAL_DEV_CHILD_TYPE), unit.text()));
    placeBeside(panel);
    m_open.append({number, unit.host.toIPv4Address(), panel});
    connect(panel, &QObject::destroyed, this, [this, panel] {
        for (int i = m_open.size() - 1; i >= 0; --i)
            if (!m_open.at(i).panel || m_open.at(i).panel == panel)
                m_open.removeAt(i);
    });
    emit panelOpened(panel, link, kind, GLOBAL_DEV_CHILD_TYPE, number);
    panel->show();
    panel->raise();
    panel->activateWindow();
    return true;
}

void showsearch::placeBeside(QWidget *panel)
{
    // The search window moves to the top left corner when the first panel opens beside it;
    // the panels go in a row to its right, the next row down when the screen ends, and
    // cascaded from the top left when that is full too.
    const QScreen *screen = this->screen();
    if (!screen)
        return;
    const QRect area = screen->availableGeometry();
    constexpr int Gap = 8;
    QWidget *last = nullptr;
    for (const OpenPanel &p : qAsConst(m_open))
        if (p.panel)
            last = p.panel;
    if (!last)
        move(area.topLeft());
    const QRect g = last ? last->frameGeometry() : frameGeometry();
    QPoint at(g.right() + 1 + Gap, g.top());
    if (at.x() + panel->width() > area.right())
        at = QPoint(area.left(), g.bottom() + 1 + Gap);
    if (at.y() + panel->height() > area.bottom())
        at = area.topLeft() + QPoint(30, 30) * int(m_open.size() % 8 + 1);
    panel->move(at);
}

void showsearch::showSearchPage()
{
    show();
    m_on_SendCMD_Scan();
}

void showsearch::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Qt::transparent));
    painter.setBrush(QColor(56, 56, 56));
    painter.drawRoundedRect(rect(), 8, 8, Qt::AbsoluteSize);
}
