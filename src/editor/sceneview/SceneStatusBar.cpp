#include "editor/sceneview/SceneStatusBar.h"

#include "editor/project/ProjectSession.h"
#include "editor/workspace/Workspace.h"

#include "widgets/scene/editing/arrange/HiddenElements.h"

#include "nodes/model/NodesCollection.h"
#include "nodes/visual/BasicWidget.h"
#include "utils/convert/PlainTip.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QToolButton>
#include <QtMath>

namespace Editor {

namespace {

constexpr int menuLinesAtMost = 40;

QLabel *makeLabel(const QString &widest, QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setMinimumWidth(label->fontMetrics().horizontalAdvance(widest));
    return label;
}

} // namespace

SceneStatusBar::SceneStatusBar(Workspace &workspace, QWidget *parent)
    : QWidget(parent),
      m_workspace(workspace),
      m_pointer(makeLabel(QStringLiteral("00000, 00000"), this)),
      m_selection(new QLabel(this)),
      m_hidden(new QToolButton(this)),
      m_hiddenMenu(new QMenu(m_hidden))
{
    m_pointer->setToolTip(QStringLiteral("Координаты указателя, пикселы окна"));
    m_hidden->setAutoRaise(true);
    m_hidden->setToolTip(QStringLiteral("Скрытые элементы: показать по одному или все"));
    m_hidden->setPopupMode(QToolButton::InstantPopup);
    m_hidden->setMenu(m_hiddenMenu);
    QSizePolicy kept = m_hidden->sizePolicy(); // the scene must not jump when it comes and goes
    kept.setRetainSizeWhenHidden(true);
    m_hidden->setSizePolicy(kept);
    m_hidden->hide();
    connect(m_hiddenMenu, &QMenu::aboutToShow, this, &SceneStatusBar::fillHiddenMenu);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(8, 2, 8, 2);
    row->setSpacing(16);
    row->addWidget(m_pointer);
    row->addWidget(m_selection, 1);
    row->addWidget(m_hidden);
    showSelection(0, QRect());
}

void SceneStatusBar::showPointer(const QPointF &at)
{
    m_pointer->setText(QStringLiteral("%1, %2").arg(qFloor(at.x())).arg(qFloor(at.y())));
}

void SceneStatusBar::clearPointer()
{
    m_pointer->clear();
}

void SceneStatusBar::showSelection(int count, const QRect &rect)
{
    if (count == 0) {
        m_selection->setText(QStringLiteral("Ничего не выделено"));
        return;
    }
    const QString place = QStringLiteral("X %1   Y %2   Ш %3   В %4")
                              .arg(rect.x())
                              .arg(rect.y())
                              .arg(rect.width())
                              .arg(rect.height());
    m_selection->setText(count == 1 ? place
                                    : QStringLiteral("Выделено: %1   %2").arg(count).arg(place));
}

void SceneStatusBar::showPreview()
{
    m_selection->setText(
        QStringLiteral("Просмотр: так окно выглядит при работе, правка выключена"));
}

void SceneStatusBar::showHidden(const Nodes::ConfigNode *document)
{
    m_document = document ? document->GetId() : 0;
    const std::size_t count = document ? Widgets::HiddenElements::in(*document).size() : 0;
    m_hidden->setText(QStringLiteral("Скрыто: %1").arg(count));
    m_hidden->setVisible(count > 0);
}

void SceneStatusBar::fillHiddenMenu()
{
    m_hiddenMenu->clear();
    const Nodes::NodesCollection *project = m_workspace.session().project();
    const Nodes::ConfigNode *document = project ? project->FindNode(m_document) : nullptr;
    if (!document)
        return;
    const auto hidden = Widgets::HiddenElements::in(*document);
    m_hiddenMenu->addAction(QStringLiteral("Показать все"), this, [this, hidden] {
        (void)m_workspace.push(Widgets::HiddenElements::show(hidden));
    });
    m_hiddenMenu->addSeparator();
    int lines = 0;
    for (Nodes::BasicWidget *element : hidden) {
        if (++lines > menuLinesAtMost)
            break;
        const QString name = QString::fromStdString(element->GetName());
        m_hiddenMenu->addAction(Utils::PlainCaption(name), this, [this, element] {
            (void)m_workspace.push(Widgets::HiddenElements::show({element}));
        });
    }
}

} // namespace Editor
