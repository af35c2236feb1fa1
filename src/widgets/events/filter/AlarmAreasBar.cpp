#include "widgets/events/filter/AlarmAreasBar.h"

#include "widgets/dialogs/DialogLook.h"
#include "widgets/dialogs/WrapLayout.h"
#include "widgets/events/AlarmSigns.h"

#include <QPushButton>
#include <QResizeEvent>

#include <algorithm>

namespace Widgets {

namespace {

constexpr int gap = 8;
constexpr int badgeSize = 24;
constexpr int mostRows = 2; // further ones are scrolled to: the list keeps its room

} // namespace

AlarmAreasBar::AlarmAreasBar(QWidget *parent) : QScrollArea(parent)
{
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    setWidgetResizable(true);
    viewport()->setAutoFillBackground(false);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    rebuild({});
}

void AlarmAreasBar::rebuild(const std::vector<AlarmArea> &areas)
{
    m_content = new QWidget;
    m_row = new WrapLayout;
    m_content->setLayout(m_row);
    m_row->setContentsMargins(0, 0, 0, 0);
    m_row->setSpacing(gap);
    m_buttons.clear();
    m_names.clear();
    for (const AlarmArea &area : areas) {
        auto *button = new QPushButton(m_content);
        button->setCheckable(true);
        button->setFocusPolicy(Qt::NoFocus);
        MakeTouchable(*button);
        button->setIconSize({badgeSize, badgeSize});
        const QString name = QString::fromStdString(area.name);
        connect(button, &QPushButton::clicked, this,
                [this, name](bool isFolded) { emit folded(name, isFolded); });
        m_row->addWidget(button);
        m_buttons.push_back(button);
        m_names.push_back(area.name);
    }
    m_row->setRoom(viewport()->width());
    setWidget(m_content);
    m_content->setAutoFillBackground(false);
}

void AlarmAreasBar::setAreas(const std::vector<AlarmArea> &areas)
{
    const bool isSame = areas.size() == m_names.size() &&
                        std::equal(areas.begin(), areas.end(), m_names.begin(),
                                   [](const AlarmArea &area, const std::string &name) {
                                       return area.name == name;
                                   });
    if (!isSame)
        rebuild(areas);
    for (std::size_t i = 0; i < areas.size(); ++i)
        show(*m_buttons[i], areas[i]);
    if (!isSame)
        updateGeometry();
}

// Numbers that change some times a second must not move the buttons: they only grow.
void AlarmAreasBar::show(QPushButton &button, const AlarmArea &area)
{
    const QString name =
        area.name.empty() ? QStringLiteral("Без участка") : QString::fromStdString(area.name);
    const QString text = QStringLiteral("%1 %2: %3, ждут %4")
                             .arg(area.isFolded ? QStringLiteral("▸") : QStringLiteral("▾"), name)
                             .arg(area.all)
                             .arg(area.waiting);
    button.setChecked(area.isFolded);
    button.setIcon(area.urgent > 0
                       ? AlarmSigns::badge(Nodes::AlarmState::ActiveUnacked, area.urgent, badgeSize)
                       : QPixmap());
    if (button.text() == text)
        return;
    button.setText(text);
    button.setMinimumWidth(std::max(button.minimumWidth(), button.sizeHint().width() + 2 * gap));
}

int AlarmAreasBar::wantedHeight() const
{
    const int most = mostRows * (TouchSize + gap) - gap;
    return std::min(most, std::max(TouchSize, m_row->heightForWidth(viewport()->width())));
}

QSize AlarmAreasBar::sizeHint() const
{
    return {m_row->sizeHint().width(), wantedHeight()};
}

QSize AlarmAreasBar::minimumSizeHint() const
{
    return {TouchButton.width(), wantedHeight()};
}

void AlarmAreasBar::resizeEvent(QResizeEvent *event)
{
    QScrollArea::resizeEvent(event);
    if (event->size().width() == event->oldSize().width())
        return;
    m_row->setRoom(viewport()->width());
    updateGeometry();
}

} // namespace Widgets
