#include "widgets/charts/own/OwnTrend.h"

#include "widgets/charts/own/OwnTrendStore.h"
#include "widgets/charts/own/TrendView.h"
#include "widgets/context/ProcessContext.h"
#include "widgets/context/SceneContext.h"
#include "widgets/dialogs/Dialogs.h"
#include "widgets/dialogs/PlainMessageBox.h"

#include "nodes/model/NodesCollection.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/system/systemCore.h"

#include <QApplication>
#include <QMenu>
#include <QPointer>

#include <algorithm>

namespace Widgets {

namespace {

QPointer<QWidget> ownWindow;

Nodes::NodeLinks signalsOf(const Nodes::NodeLinks &links)
{
    Nodes::NodeLinks found;
    for (const Nodes::NodeLink &link : links)
        if (dynamic_cast<const Nodes::BasicSignal *>(link.GetNode()) &&
            std::find(found.begin(), found.end(), link) == found.end())
            found.push_back(link);
    return found;
}

QWidget *openWindow(const Nodes::NodeLinks &shown, bool isOwn, int display)
{
    DialogRequest request;
    request.parent = QApplication::activeWindow();
    request.node = ProcessContext::model()->GetNodesCollection()->GetRoot(); // says whose users
    if (display >= 0)
        request.display = display;
    QWidget *window = Dialogs::make(TrendView::Key, request);
    auto *view = dynamic_cast<TrendView *>(window);
    if (!view)
        return nullptr; // the station ends
    window->setAttribute(Qt::WA_DeleteOnClose);
    view->setSignals(shown, isOwn);
    window->show();
    window->raise();
    window->activateWindow();
    return window;
}

bool isPossible()
{
    return ProcessContext::model() && ProcessContext::model()->GetNodesCollection() &&
           SceneContext::process()->isRuntime();
}

} // namespace

void OwnTrend::show(const Nodes::NodeLinks &shown, int display)
{
    const Nodes::NodeLinks found = signalsOf(shown);
    if (isPossible() && !found.empty())
        openWindow(found, false, display);
}

void OwnTrend::open(int display)
{
    if (!isPossible())
        return;
    if (ownWindow) {
        ownWindow->raise();
        return ownWindow->activateWindow();
    }
    ownWindow = openWindow(OwnTrendStore(*ProcessContext::model()).load(), true, display);
}

void OwnTrend::add(const Nodes::NodeLinks &added)
{
    if (!isPossible())
        return;
    Nodes::NodeLinks shown = OwnTrendStore(*ProcessContext::model()).load();
    shown.insert(shown.end(), added.begin(), added.end());
    shown = signalsOf(shown);
    keep(shown);
    if (auto *view = dynamic_cast<TrendView *>(ownWindow.data()))
        view->setSignals(shown, true);
    open();
}

void OwnTrend::keep(const Nodes::NodeLinks &shown)
{
    if (!isPossible())
        return;
    const Nodes::Result kept = OwnTrendStore(*ProcessContext::model()).save(shown);
    if (!kept)
        PlainMessageBox::tell(QMessageBox::Warning, QStringLiteral("Ошибка"),
                              QStringLiteral("Свой тренд не сохранён: ") +
                                  QString::fromStdString(kept.GetResultTranslated()));
}

void OwnTrend::fillMenu(QMenu &menu, const Nodes::BasicSignal *signal)
{
    if (!signal)
        return;
    const Nodes::NodeLink link = signal->GetNodeLink();
    QObject::connect(menu.addAction(QStringLiteral("Показать тренд")), &QAction::triggered, &menu,
                     [link] { show({link}); });
    QObject::connect(menu.addAction(QStringLiteral("Добавить в свой тренд")), &QAction::triggered,
                     &menu, [link] { add({link}); });
    QObject::connect(menu.addAction(QStringLiteral("Свой тренд…")), &QAction::triggered, &menu,
                     [] { open(); });
}

} // namespace Widgets
