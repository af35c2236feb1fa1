#include "widgets/charts/aids/ChartAids.h"

#include "widgets/charts/legend/Legend.h"
#include "widgets/charts/menus/TouchMenu.h"
#include "widgets/charts/pickers/CursorRelay.h"
#include "widgets/charts/pickers/IPickerCanvas.h"
#include "widgets/charts/plots/ChartGroupManager.h"
#include "widgets/charts/plots/Plot.h"
#include "widgets/charts/plots/PlotCanvas.h"
#include "widgets/charts/statistics/CursorPanel.h"
#include "widgets/dialogs/DialogLook.h"

#include "nodes/charts/widgetChart.h"

#include <QContextMenuEvent>
#include <QToolButton>
#include <QVBoxLayout>

namespace Widgets {

namespace {

constexpr int buttonSize = 28;
constexpr int buttonMargin = 9;

} // namespace

ChartAids::ChartAids(Plot *plot, ChartGroupManager *manager, Legend *legend, QWidget *element)
    : m_plot(plot),
      m_manager(manager),
      m_legend(legend),
      m_element(element),
      m_panel(new CursorPanel(plot, element)),
      m_button(new QToolButton(plot->canvas()))
{
    if (auto *layout = qobject_cast<QVBoxLayout *>(element->layout()))
        layout->addWidget(m_panel);
    m_button->setText(QStringLiteral("⋮"));
    m_button->setToolTip(QStringLiteral("Меню графика"));
    m_button->setFixedSize(buttonSize, buttonSize);
    m_button->setAutoRaise(true);
    m_button->setCursor(Qt::ArrowCursor);
    MakeLegible(*m_button);
    connect(m_button, &QToolButton::clicked, this,
            [this] { openMenu(m_button->geometry().bottomLeft()); });
    plot->canvas()->installEventFilter(this);
    placeButton();
}

ChartAids::~ChartAids() = default;

bool ChartAids::eventFilter(QObject *watched, QEvent *event)
{
    if (!m_plot || watched != m_plot->canvas())
        return QObject::eventFilter(watched, event);
    if (event->type() == QEvent::Resize || event->type() == QEvent::LayoutRequest) {
        placeButton();
    } else if (event->type() == QEvent::ContextMenu && m_plot->isAtWork()) {
        openMenu(static_cast<QContextMenuEvent *>(event)->pos());
        return true;
    }
    return QObject::eventFilter(watched, event);
}

// In the corner that no tool bar stands in.
void ChartAids::placeButton()
{
    const QWidget *canvas = m_plot->canvas();
    m_button->move(canvas->width() - buttonSize - buttonMargin,
                   canvas->height() - buttonSize - buttonMargin);
}

void ChartAids::openMenu(const QPoint &place)
{
    auto *menu = new TouchMenu(m_element);
    fillMenu(*menu, place);
    menu->openAt(m_plot->canvas()->mapToGlobal(place));
}

void ChartAids::fillMenu(QMenu &menu, const QPoint &place)
{
    addCursors(menu, place);
}

void ChartAids::addCursors(QMenu &menu, const QPoint &)
{
    const QPointer<IPickerCanvas> picker = CursorRelay::of(*m_plot).picker();
    if (!picker)
        return;
    QAction *second = menu.addAction(QStringLiteral("Второй визир здесь"));
    second->setEnabled(picker->canSplit());
    connect(second, &QAction::triggered, picker, &IPickerCanvas::splitLast);
    QAction *remove = menu.addAction(QStringLiteral("Убрать второй визир"));
    remove->setEnabled(picker->position(IPickerCanvas::SecondCursor).has_value());
    connect(remove, &QAction::triggered, picker,
            [picker] { picker->remove(IPickerCanvas::SecondCursor); });
    menu.addSeparator();
}

} // namespace Widgets
