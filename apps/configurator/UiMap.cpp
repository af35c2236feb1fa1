#include "apps/configurator/UiMap.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/visual/BasicWidget.h"
#include "widgets/scene/ProxyLayer.h"
#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/ProxyView.h"
#include "widgets/scene/ProxyWidget.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QSaveFile>
#include <QTabBar>

namespace Configurator {

namespace {

constexpr int period = 200;   // ms
constexpr int rowLimit = 300; // of one view

void add(QJsonArray &controls, const QString &kind, const QString &name, const QString &text,
         const QRect &place, bool isEnabled)
{
    controls.append(QJsonObject{{"kind", kind},
                                {"name", name},
                                {"text", text},
                                {"x", place.x()},
                                {"y", place.y()},
                                {"width", place.width()},
                                {"height", place.height()},
                                {"enabled", isEnabled}});
}

QRect onScreen(const QWidget &widget, const QRect &part)
{
    return {widget.mapToGlobal(part.topLeft()), part.size()};
}

QString textOf(const QWidget &widget)
{
    if (const auto *button = qobject_cast<const QAbstractButton *>(&widget))
        return button->text();
    if (const auto *label = qobject_cast<const QLabel *>(&widget))
        return label->text();
    if (const auto *line = qobject_cast<const QLineEdit *>(&widget))
        return line->echoMode() == QLineEdit::Normal ? line->text() : QString();
    return {};
}

void addRows(const QAbstractItemView &view, QJsonArray &controls)
{
    const QAbstractItemModel *model = view.model();
    const QRect shown = view.viewport()->rect();
    int count = 0;
    for (int y = 1; model && y < shown.height() && count < rowLimit;) {
        const QModelIndex first = view.indexAt({shown.width() / 4, y});
        if (!first.isValid()) {
            y += 8;
            continue;
        }
        for (int column = 0; column < model->columnCount(first.parent()); ++column) {
            const QModelIndex index = first.sibling(first.row(), column);
            const QRect place = view.visualRect(index).intersected(shown);
            if (!place.isEmpty())
                add(controls, "item", view.objectName(), index.data().toString(),
                    onScreen(*view.viewport(), place), index.flags() & Qt::ItemIsEnabled);
        }
        y = view.visualRect(first).bottom() + 2;
        ++count;
    }
}

void addElements(const Widgets::ProxyView &view, QJsonArray &controls)
{
    const Widgets::ProxyScene *scene = view.proxyScene();
    if (!scene)
        return;
    for (const Widgets::ProxyLayer *layer : scene->getLayers()) {
        for (const Widgets::ProxyWidget *host : layer->getWidgets()) {
            const QRect place = view.mapFromScene(host->sceneBoundingRect()).boundingRect();
            if (const Nodes::BasicWidget *node = host->getNode())
                add(controls, "element", QString::fromStdString(node->GetName()), {},
                    onScreen(*view.viewport(), place), host->isEnabled());
        }
    }
}

} // namespace

UiMap::UiMap(const QString &file, QObject *parent) : QObject(parent), m_file(file)
{
    startTimer(period);
}

void UiMap::addParts(const QWidget &widget, QJsonArray &controls)
{
    if (const auto *view = qobject_cast<const QAbstractItemView *>(&widget))
        addRows(*view, controls);
    if (const auto *view = qobject_cast<const Widgets::ProxyView *>(&widget))
        addElements(*view, controls);
    if (const auto *tabs = qobject_cast<const QTabBar *>(&widget)) {
        for (int i = 0; i < tabs->count(); ++i)
            add(controls, "tab", tabs->objectName(), tabs->tabText(i),
                onScreen(*tabs, tabs->tabRect(i)), tabs->isTabEnabled(i));
    }
    if (const auto *menu = qobject_cast<const QMenu *>(&widget)) {
        const QList<QAction *> actions = menu->actions();
        for (QAction *action : actions)
            add(controls, "action", action->objectName(), action->text().remove(QLatin1Char('&')),
                onScreen(*menu, menu->actionGeometry(action)), action->isEnabled());
    }
}

void UiMap::addWidget(const QWidget &widget, QJsonArray &controls)
{
    const QRect place(widget.mapTo(widget.window(), QPoint()), widget.size());
    if (!widget.isVisible() || !place.intersects(widget.window()->rect()))
        return; // tabs of docks that are not in front lie outside
    add(controls, QString::fromLatin1(widget.metaObject()->className()), widget.objectName(),
        textOf(widget), onScreen(widget, widget.rect()), widget.isEnabled());
    addParts(widget, controls);
}

void UiMap::timerEvent(QTimerEvent *)
{
    QJsonArray controls;
    QJsonArray titles;
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (const QWidget *window : windows) {
        if (!window->isVisible())
            continue;
        titles.append(window->windowTitle());
        addWidget(*window, controls);
        const auto children = window->findChildren<QWidget *>();
        for (const QWidget *child : children)
            addWidget(*child, controls);
    }
    const QByteArray text =
        QJsonDocument(QJsonObject{{"titles", titles}, {"controls", controls}}).toJson();
    if (text == m_written)
        return;
    QSaveFile file(m_file);
    if (file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.commit())
        m_written = text;
}

} // namespace Configurator
