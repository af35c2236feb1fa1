#include "widgets/events/AlarmDialog.h"

#include "widgets/dialogs/DialogLook.h"
#include "widgets/dialogs/WrapLayout.h"
#include "widgets/elements/alarms/AlarmBoard.h"
#include "widgets/events/ModelAlarms.h"
#include "widgets/events/ModelManager.h"
#include "widgets/events/TableAlarms.h"
#include "widgets/events/details/AlarmPanes.h"
#include "widgets/events/filter/AlarmAreasBar.h"
#include "widgets/events/filter/AlarmFilterBar.h"
#include "widgets/events/filter/AlarmFiltering.h"
#include "widgets/events/filter/AlarmFloodView.h"
#include "widgets/events/filter/AlarmHeadline.h"
#include "widgets/events/filter/AlarmList.h"
#include "widgets/events/hidden/ModelHidden.h"
#include "widgets/windows/DesktopContext.h"

#include "nodes/alarms/systemAlarming.h"

#include <QCheckBox>
#include <QItemSelectionModel>
#include <QPushButton>
#include <QScrollBar>
#include <QStyle>
#include <QVBoxLayout>

#include <array>
#include <utility>

namespace Widgets {

namespace {

constexpr int defaultButtonSize = 48;
constexpr int defaultHeight = 300;
constexpr int scrollBarRoom = 40;
constexpr int controlSpacing = 8;
constexpr int summaryDelay = 200; // ms

Nodes::systemAlarming *alarmSystem()
{
    return DesktopContext::alarming();
}

} // namespace

AlarmDialog::AlarmDialog(QWidget *parent)
    : QWidget(parent),
      m_manager(new ModelManager(this)),
      m_controls(new WrapLayout),
      m_table(new TableAlarms(this))
{
    setWindowTitle(QStringLiteral("Тревоги"));
    ApplyDialogLook(*this);
    m_manager->attach(*m_table);
    m_controls->setSpacing(controlSpacing);
    if (alarmSystem()) {
        addAcknowledgeButtons(*m_controls);
        addCheckBoxes(*m_controls);
    }
    m_soundButton = makeButton({});
    m_soundButton->setCheckable(true);
    m_soundButton->setToolTip(QStringLiteral("Звук тревог"));
    connect(m_soundButton, &QPushButton::toggled, this, &AlarmDialog::onSoundToggled);
    m_controls->addWidget(m_soundButton);
    m_controls->addStretch();
    m_closeButton = makeButton(QStringLiteral("Закрыть"));
    connect(m_closeButton, &QPushButton::clicked, this, &AlarmDialog::closeRequested);
    m_controls->addWidget(m_closeButton);
    buildHead();
    buildPanes();
    auto *layout = new QVBoxLayout(this);
    layout->setSizeConstraint(QLayout::SetMinimumSize); // the buttons do not overlap
    layout->addWidget(m_headline);
    layout->addWidget(m_filterBar);
    layout->addWidget(m_areasBar);
    layout->addWidget(m_table, 1);
    layout->addWidget(m_panes);
    layout->addLayout(m_controls);
    onSoundToggled(false);
    applySizes();
    summarise();
    Utils::NodeRelay::Handlers handlers;
    handlers.propertyChanged = [this](Nodes::BasicProperty *) { onUpdateProperties(); };
    m_relay.connect(alarmSystem(), std::move(handlers));
}

AlarmDialog::~AlarmDialog() = default;

void AlarmDialog::buildHead()
{
    m_headline = new AlarmHeadline(this);
    m_filterBar = new AlarmFilterBar(this);
    m_filtering = new AlarmFiltering(*m_manager, *m_filterBar, this);
    m_filterBar->setVisible(false);
    m_areasBar = new AlarmAreasBar(this);
    m_flood = new AlarmFloodView(alarmSystem(), *m_manager, *m_areasBar, this);
    connect(m_flood, &AlarmFloodView::floodChanged, this, &AlarmDialog::summarise);
    connect(&m_headline->filterButton(), &QPushButton::toggled, this, [this](bool isOut) {
        m_filterBar->setVisible(isOut);
        tellHeight(true);
    });
    connect(m_headline, &AlarmHeadline::resetWanted, m_filtering, &AlarmFiltering::reset);
    connect(m_headline, &AlarmHeadline::beginningWanted, m_table, &QTableView::scrollToTop);
    m_summary.setSingleShot(true);
    m_summary.setInterval(summaryDelay);
    connect(&m_summary, &QTimer::timeout, this, &AlarmDialog::summarise);
    const auto isDue = [this] {
        if (!m_summary.isActive())
            m_summary.start();
    };
    connect(m_manager, &ModelManager::changed, this, isDue);
    connect(&m_manager->sorting(), &AlarmList::filterChanged, this, &AlarmDialog::summarise);
    connect(m_table->verticalScrollBar(), &QScrollBar::valueChanged, this, isDue);
}

void AlarmDialog::buildPanes()
{
    m_panes = new AlarmPanes(*m_manager, *m_table, this);
    connect(&m_headline->detailsButton(), &QPushButton::clicked, this,
            [this](bool isOut) { fold(AlarmPanes::Details, isOut); });
    connect(&m_headline->hiddenButton(), &QPushButton::clicked, this,
            [this](bool isOut) { fold(AlarmPanes::Hidden, isOut); });
    // An alarm has more to say than none; the panes have heard of it before.
    connect(m_table, &TableAlarms::selected, this, [this] { tellHeight(true); });
    connect(m_panes, &AlarmPanes::paneChanged, this, [this] {
        m_headline->detailsButton().setChecked(m_panes->pane() == AlarmPanes::Details);
        m_headline->hiddenButton().setChecked(m_panes->pane() == AlarmPanes::Hidden);
    });
}

void AlarmDialog::fold(int pane, bool isOut)
{
    m_panes->setPane(isOut ? AlarmPanes::Pane(pane) : AlarmPanes::None);
    tellHeight(true);
}

void AlarmDialog::tellHeight(bool isFolding)
{
    int height = 0;
    const std::array<const QWidget *, 4> parts{m_headline, m_filterBar, m_areasBar, m_panes};
    for (const QWidget *part : parts) {
        if (part->isHidden())
            continue;
        const bool wraps = part->hasHeightForWidth() && part->width() > 0;
        height += (wraps ? part->heightForWidth(part->width()) : part->sizeHint().height()) +
                  layout()->spacing();
    }
    // At another width the same parts wrap otherwise: no reason to take back a height somebody
    // chose.
    const bool isSameWidth = std::exchange(m_besidesWidth, width()) == width();
    const int before = std::exchange(m_besides, height);
    if (before != height && (isSameWidth || isFolding))
        emit heightWanted(before);
}

void AlarmDialog::summarise()
{
    const ModelManager::Counts counts = m_manager->counts();
    AlarmHeadline::Facts facts;
    facts.all = counts.all;
    facts.shown = counts.shown;
    facts.waiting = counts.waiting;
    facts.hiddenUrgent = counts.hiddenUrgent;
    facts.floodCount = m_flood->flood().isFlood ? m_flood->flood().raisedInTenMinutes : -1;
    facts.newAbove = m_table->newAbove();
    const ModelHidden::Counts hidden = m_manager->hidden().counts();
    facts.shelved = hidden.shelved;
    facts.suppressed = hidden.suppressed;
    facts.outOfService = hidden.outOfService;
    facts.isFiltered = !m_manager->sorting().filter().isEmpty();
    m_headline->setFacts(facts);
    m_filtering->findAreas();
    m_flood->countAreas();
    AlarmBoard::instance().setFilter(m_filtering->words());
    m_panes->follow();
    tellHeight(false);
}

QPushButton *AlarmDialog::makeButton(const QString &text)
{
    auto *button = new QPushButton(text, this);
    QFont font = button->font();
    font.setPointSize(12);
    button->setFont(font);
    button->setFocusPolicy(Qt::NoFocus); // Return and Space acknowledge nothing by mistake
    if (!text.isEmpty())
        button->setMinimumWidth(button->fontMetrics().horizontalAdvance(text) + 32);
    return button;
}

void AlarmDialog::addAcknowledgeButtons(WrapLayout &row)
{
    if (!alarmSystem()->isAcknowledgeEnabled())
        return;
    m_acknowledgeAllButton =
        makeAcknowledgeButton(QStringLiteral("Квитировать все"),
                              [this](unsigned revision) { return m_manager->waiting(revision); });
    row.addWidget(m_acknowledgeAllButton);
    m_acknowledgeSelectedButton =
        makeAcknowledgeButton(QStringLiteral("Квитировать выбранный"),
                              [this](unsigned revision) { return selected(revision); });
    row.addWidget(m_acknowledgeSelectedButton);
}

QPushButton *AlarmDialog::makeAcknowledgeButton(const QString &text, Choice choose)
{
    QPushButton *button = makeButton(text);
    connect(button, &QPushButton::pressed, this,
            [this, choose = std::move(choose)] { m_chosen = choose(m_table->seenRevision()); });
    connect(button, &QPushButton::clicked, this,
            [this] { m_manager->acknowledge(std::exchange(m_chosen, {})); });
    return button;
}

Nodes::AlarmOccurrences AlarmDialog::selected(unsigned revision) const
{
    const QModelIndex index = m_table->selectedRow();
    if (!index.isValid() || m_manager->model().row(index.row()).waitsSince > revision)
        return {};
    return {m_manager->model().row(index.row()).occurrence()};
}

void AlarmDialog::addCheckBoxes(WrapLayout &row)
{
    auto *hide = new QCheckBox(QStringLiteral("Скрывать неактивные"), this);
    connect(hide, &QCheckBox::toggled, m_manager, &ModelManager::setHideInactive);
    hide->hide();
    auto *remove = new QCheckBox(QStringLiteral("Удалять неактивные"), this);
    remove->setChecked(true);
    connect(remove, &QCheckBox::toggled, m_manager, &ModelManager::setRemoveInactive);
    for (QCheckBox *box : {hide, remove}) {
        QFont font = box->font();
        font.setPointSize(12);
        box->setFont(font);
        box->setStyleSheet(QStringLiteral("QCheckBox { spacing: 8px; padding: 0 12px; }"
                                          "QCheckBox::indicator { width: 28px; height: 28px; }"));
        box->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
        row.addWidget(box);
    }
}

void AlarmDialog::onSoundToggled(bool isMuted)
{
    const QStyle::StandardPixmap icon =
        isMuted ? QStyle::SP_MediaVolumeMuted : QStyle::SP_MediaVolume;
    m_soundButton->setIcon(style()->standardIcon(icon));
    m_manager->setMuted(isMuted);
    AlarmBoard::instance().setMuted(isMuted);
}

void AlarmDialog::soundOn()
{
    m_soundButton->setChecked(false);
}

void AlarmDialog::setRoom(int width)
{
    const QMargins margins = layout()->contentsMargins();
    const int room = width - margins.left() - margins.right();
    m_controls->setRoom(room);
    m_headline->setRoom(room);
    m_filterBar->setRoom(room);
    m_panes->setRoom(room);
    layout()->activate();
}

void AlarmDialog::onUpdateProperties()
{
    m_manager->readSettings();
    applySizes();
}

void AlarmDialog::applySizes()
{
    const Nodes::systemAlarming *alarming = alarmSystem();
    const int size = alarming ? alarming->GetButtonSize() : defaultButtonSize;
    m_soundButton->setVisible(!alarming || alarming->GetSoundButton() == 1);
    m_soundButton->setFixedSize(size, size);
    m_soundButton->setIconSize(QSize(size * 5 / 8, size * 5 / 8));
    for (QPushButton *button :
         {m_closeButton, m_acknowledgeAllButton, m_acknowledgeSelectedButton}) {
        if (button)
            button->setFixedHeight(size);
    }
}

QSize AlarmDialog::sizeHint() const
{
    return {m_table->headerWidth() + scrollBarRoom, defaultHeight};
}

} // namespace Widgets
