#include "editor/sceneview/SceneToolBar.h"

#include "editor/sceneview/EditedView.h"

#include "widgets/scene/editing/arrange/EditedElements.h"
#include "widgets/scene/editing/arrange/SceneEditTable.h"
#include "widgets/scene/editing/guides/SnapSettings.h"

#include <QActionGroup>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QToolButton>

#include <algorithm>

namespace Editor {

namespace {

using Widgets::SnapSettings;

const int zooms[] = {25, 50, 75, 100, 150, 200, 400, 800};

QIcon iconOf(const char *name)
{
    return QIcon(QStringLiteral(":/editor/icons/%1.svg").arg(QLatin1String(name)));
}

QString percentText(int percent)
{
    return QStringLiteral("%1 %").arg(percent);
}

} // namespace

SceneToolBar::SceneToolBar(EditedView &view, QWidget *parent) : QToolBar(parent), m_view(view)
{
    setIconSize(QSize(16, 16));
    setMovable(false);
    setStyleSheet(QStringLiteral("QToolBar { spacing: 1px; } QToolButton { padding: 2px; }"));
    addZoom();
    addSeparator();
    addSnapping();
    addSeparator();
    addBackdrop();
    addSeparator();
    m_preview = addAction(iconOf("preview"), QStringLiteral("Просмотр"));
    m_preview->setCheckable(true);
    m_preview->setToolTip(QStringLiteral("Показать окно как при работе, без правки"));
    qobject_cast<QWidget *>(widgetForAction(m_preview))->setFocusPolicy(Qt::NoFocus);
    addSeparator();
    addEdits();
    connect(&view, &EditedView::viewChanged, this, &SceneToolBar::showZoom);
    connect(&SnapSettings::process(), &SnapSettings::changed, this, &SceneToolBar::showSettings);
    showZoom();
    showSettings();
}

void SceneToolBar::addZoom()
{
    addAction(iconOf("zoomFit"), QStringLiteral("Вписать окно"), this, &SceneToolBar::fitAsked);
    addAction(iconOf("zoomSelection"), QStringLiteral("К выделению"), this,
              &SceneToolBar::fitSelectionAsked);
    addAction(iconOf("zoom100"), QStringLiteral("100 %"), this, [this] { emit percentAsked(100); });
    m_zoom = new QComboBox(this);
    m_zoom->setEditable(true);
    m_zoom->setInsertPolicy(QComboBox::NoInsert);
    m_zoom->setToolTip(QStringLiteral("Масштаб, от %1 до %2 %")
                           .arg(EditedView::LeastPercent)
                           .arg(EditedView::GreatestPercent));
    for (const int percent : zooms)
        m_zoom->addItem(percentText(percent));
    addWidget(m_zoom);
    connect(m_zoom, qOverload<int>(&QComboBox::activated), this, &SceneToolBar::takeZoom);
    connect(m_zoom->lineEdit(), &QLineEdit::editingFinished, this, &SceneToolBar::takeZoom);
}

void SceneToolBar::takeZoom()
{
    QString text = m_zoom->currentText();
    text.remove(QLatin1Char('%'));
    bool isNumber = false;
    const int percent =
        qRound(text.trimmed().replace(QLatin1Char(','), QLatin1Char('.')).toDouble(&isNumber));
    if (isNumber && percent > 0 && percent != m_view.percent())
        emit percentAsked(percent);
    showZoom();
}

void SceneToolBar::showZoom()
{
    const QSignalBlocker quiet(m_zoom);
    m_zoom->setEditText(percentText(m_view.percent()));
}

void SceneToolBar::addSnapping()
{
    SnapSettings &settings = SnapSettings::process();
    settings.setOffered();
    m_toGrid = addAction(iconOf("grid"), QStringLiteral("Привязка к сетке"));
    m_toGrid->setToolTip(QStringLiteral("Сетка и привязка к ней (Alt — без привязки)"));
    m_toGrid->setCheckable(true);
    m_step = new QSpinBox(this);
    m_step->setRange(Widgets::SnapOptions::LeastStep, Widgets::SnapOptions::GreatestStep);
    m_step->setSuffix(QStringLiteral(" px"));
    m_step->setToolTip(QStringLiteral("Шаг сетки"));
    addWidget(m_step);
    m_toElements = addAction(iconOf("guides"), QStringLiteral("Привязка к элементам"));
    m_toElements->setToolTip(QStringLiteral(
        "Привязка к краям, центрам и промежуткам других элементов (Alt — без привязки)"));
    m_toElements->setCheckable(true);
    connect(m_toGrid, &QAction::toggled, &settings, &SnapSettings::setToGrid);
    connect(m_step, qOverload<int>(&QSpinBox::valueChanged), &settings, &SnapSettings::setGridStep);
    connect(m_toElements, &QAction::toggled, &settings, &SnapSettings::setToElements);
}

void SceneToolBar::addBackdrop()
{
    m_backdrop = new QActionGroup(this);
    QMenu *menu =
        addMenu(QStringLiteral("Фон в редакторе; на проект не влияет"), iconOf("backdrop"));
    const auto offer = [this, menu](const char *text, SceneBackdrop::enKind kind) {
        QAction *action = menu->addAction(QString::fromUtf8(text));
        action->setCheckable(true);
        action->setData(kind);
        action->setChecked(kind == SceneBackdrop::Project);
        m_backdrop->addAction(action);
    };
    offer("Фон окна", SceneBackdrop::Project);
    offer("Светлый", SceneBackdrop::Light);
    offer("Тёмный", SceneBackdrop::Dark);
    offer("Клетки", SceneBackdrop::Checker);
    connect(m_backdrop, &QActionGroup::triggered, this, [this](const QAction *action) {
        SceneBackdrop backdrop = m_view.backdrop();
        backdrop.kind = SceneBackdrop::enKind(action->data().toInt());
        m_view.setBackdrop(backdrop);
    });
}

// Those that stand in submenus elsewhere: here they are a click away. The last group has a button
// for all of it: the bar fits a screen of 1366 pixels.
void SceneToolBar::addEdits()
{
    QString group;
    const auto &rows = Widgets::SceneEditTable::rows();
    const auto last = std::find_if(rows.rbegin(), rows.rend(),
                                   [](const Widgets::SceneEditRow &edit) { return *edit.group; });
    const QString lastGroup = last != rows.rend() ? QString::fromUtf8(last->group) : QString();
    QMenu *menu = nullptr;
    for (const Widgets::SceneEditRow &edit : rows) {
        const QString title = QString::fromUtf8(edit.group);
        if (title.isEmpty())
            continue;
        if (!group.isEmpty() && group != title)
            addSeparator();
        group = title;
        const QIcon icon(QStringLiteral(":/icons/arrange/%1.svg").arg(edit.id));
        if (title == lastGroup && !menu)
            menu = addMenu(title, icon);
        QAction *action = new QAction(icon, QString::fromUtf8(edit.text), this);
        connect(action, &QAction::triggered, this, [this, &edit] { emit editAsked(edit); });
        if (menu)
            menu->addAction(action);
        else
            addAction(action);
        const QString keys = QKeySequence(edit.shortcut).toString(QKeySequence::NativeText);
        action->setToolTip(QStringLiteral("%1: %2").arg(title, action->text()) +
                           (keys.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(keys)));
        m_edits.insert(&edit, action);
    }
}

QMenu *SceneToolBar::addMenu(const QString &title, const QIcon &icon)
{
    auto *button = new QToolButton(this);
    button->setIcon(icon);
    button->setToolTip(title);
    button->setPopupMode(QToolButton::InstantPopup);
    button->setMenu(new QMenu(button));
    addWidget(button);
    return button->menu();
}

void SceneToolBar::showPossible(const Widgets::EditedElements &edited)
{
    for (auto edit = m_edits.constBegin(); edit != m_edits.constEnd(); ++edit)
        edit.value()->setEnabled(Widgets::SceneEditTable::isPossible(*edit.key(), edited));
}

void SceneToolBar::showSettings()
{
    const Widgets::SnapOptions &options = SnapSettings::process().options();
    m_toGrid->setChecked(options.toGrid);
    m_toElements->setChecked(options.toElements);
    m_step->setValue(options.gridStep);
    SceneBackdrop backdrop = m_view.backdrop();
    backdrop.gridStep = options.toGrid ? options.gridStep : 0;
    m_view.setBackdrop(backdrop);
}

} // namespace Editor
