#include "showsearch.h"

#include "SwitcherData/workdata.h"
#include "common/centre.h"
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
#include <QSettings>
#include <QShortcut>
#include <QSpacerItem>
#include <QTimer>
#include <QVBoxLayout>
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
