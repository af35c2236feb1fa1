#include "editor/usages/ReplaceDialog.h"

#include "editor/picker/NodePicker.h"
#include "editor/project/ProjectSession.h"
#include "editor/usages/ReplaceModel.h"
#include "editor/workspace/KeyboardAccess.h"
#include "editor/workspace/Workspace.h"

#include "nodes/model/ConfigNode.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace Editor {

namespace {

QTreeView *makeView(ReplaceModel &model, QWidget *parent)
{
    auto *view = new QTreeView(parent);
    view->setAccessibleName(QStringLiteral("Ссылки"));
    view->setModel(&model);
    view->setRootIsDecorated(false);
    view->setUniformRowHeights(true);
    view->setTextElideMode(Qt::ElideMiddle); // paths tell by their ends
    const int letter = view->fontMetrics().averageCharWidth();
    const int widths[] = {34, 16, 32, 32};
    for (int column = 0; column < ReplaceModel::ColumnNote; ++column)
        view->header()->resizeSection(column, letter * widths[column]);
    return view;
}

QString nameOnButton(const Nodes::NodeLink &node)
{
    return node.isValid() ? QString::fromStdString(node.GetLinkName(true))
                          : QStringLiteral("Выбрать…");
}

} // namespace

ReplaceDialog::ReplaceDialog(Workspace &workspace, enMode mode, const Nodes::NodeLink &from,
                             const Nodes::NodeLinks &scope)
    : QDialog(workspace.window()),
      m_workspace(workspace),
      m_mode(mode),
      m_from(from),
      m_scope(scope),
      m_model(new ReplaceModel(this)),
      m_where(new QComboBox(this)),
      m_summary(new QLabel(this))
{
    setWindowTitle(mode == ModeNode ? QStringLiteral("Заменить сигнал")
                                    : QStringLiteral("Заменить по образцу"));
    resize(1040, 600);
    m_where->addItems({QStringLiteral("Во всём проекте"), QStringLiteral("В выделенных узлах")});
    m_where->setEnabled(!scope.empty());
    auto *buttons = new QDialogButtonBox(this);
    m_ok = buttons->addButton(QStringLiteral("Заменить"), QDialogButtonBox::AcceptRole);
    buttons->addButton(QStringLiteral("Отмена"), QDialogButtonBox::RejectRole);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(mode == ModeNode ? makeNodePage() : makePatternPage());
    layout->addWidget(makeView(*m_model, this), 1);
    layout->addWidget(m_summary);
    layout->addWidget(buttons);

    connect(buttons, &QDialogButtonBox::accepted, this, &ReplaceDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_where, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &ReplaceDialog::refresh);
    connect(m_model, &QAbstractItemModel::dataChanged, this, &ReplaceDialog::count);
    KeyboardAccess::followLayouts(*this);
    (m_oldText ? static_cast<QWidget *>(m_oldText) : m_toButton)->setFocus();
    refresh();
}

ReplaceDialog::~ReplaceDialog() = default;

QWidget *ReplaceDialog::makeNodePage()
{
    auto *page = new QWidget(this);
    auto *form = new QFormLayout(page);
    form->setContentsMargins(0, 0, 0, 0);
    m_fromButton = new QPushButton(page);
    m_toButton = new QPushButton(page);
    form->addRow(QStringLiteral("Ссылки на:"), m_fromButton);
    form->addRow(QStringLiteral("вести на:"), m_toButton);
    form->addRow(QStringLiteral("Где:"), m_where);
    connect(m_fromButton, &QPushButton::clicked, this,
            [this] { pick(m_from, QStringLiteral("Ссылки на какой узел заменить")); });
    connect(m_toButton, &QPushButton::clicked, this,
            [this] { pick(m_to, QStringLiteral("На какой узел вести ссылки")); });
    return page;
}

QWidget *ReplaceDialog::makePatternPage()
{
    auto *page = new QWidget(this);
    auto *form = new QFormLayout(page);
    form->setContentsMargins(0, 0, 0, 0);
    m_oldText = new QLineEdit(page);
    m_newText = new QLineEdit(page);
    m_oldText->setPlaceholderText(QStringLiteral("К1/"));
    m_newText->setPlaceholderText(QStringLiteral("К2/"));
    form->addRow(QStringLiteral("В путях вместо:"), m_oldText);
    form->addRow(QStringLiteral("подставить:"), m_newText);
    form->addRow(QStringLiteral("Где:"), m_where);
    connect(m_oldText, &QLineEdit::textChanged, this, &ReplaceDialog::refresh);
    connect(m_newText, &QLineEdit::textChanged, this, &ReplaceDialog::refresh);
    return page;
}

void ReplaceDialog::pick(Nodes::NodeLink &node, const QString &title)
{
    Nodes::NodesCollection *project = m_workspace.session().project();
    if (!project)
        return;
    const auto isAny = [](const Nodes::ConfigNode &) { return true; };
    const Nodes::NodeLink picked = NodePicker::pick(project, title, isAny, node, this);
    if (picked.isEmpty())
        return;
    node = picked;
    refresh();
}

void ReplaceDialog::setNodes(const Nodes::NodeLink &from, const Nodes::NodeLink &to)
{
    m_from = from;
    m_to = to;
    refresh();
}

void ReplaceDialog::setTexts(const QString &oldText, const QString &newText)
{
    m_oldText->setText(oldText);
    m_newText->setText(newText);
}

void ReplaceDialog::setWholeProject(bool isWhole)
{
    m_where->setCurrentIndex(isWhole ? 0 : 1);
}

Nodes::NodeLinks ReplaceDialog::scope() const
{
    return m_where->currentIndex() == 0 ? Nodes::NodeLinks() : m_scope;
}

void ReplaceDialog::refresh()
{
    const Nodes::NodesCollection *project = m_workspace.session().project();
    if (!project)
        return;
    if (m_mode == ModeNode) {
        m_fromButton->setText(nameOnButton(m_from));
        m_toButton->setText(nameOnButton(m_to));
        const bool isReady = m_from.isValid() && m_to.isValid();
        m_model->setPlan(isReady ? ReplacePlan::node(m_from, m_to, scope()) : ReplacePlan());
    } else {
        m_model->setPlan(
            ReplacePlan::pattern(*project, m_oldText->text(), m_newText->text(), scope()));
    }
    count();
}

// Nothing has been looked for before that is there.
QString ReplaceDialog::whatLacks() const
{
    if (m_mode == ModePattern)
        return m_oldText->text().isEmpty()
                   ? QStringLiteral("Впишите часть путей, которую заменить.")
                   : QString();
    if (!m_from.isValid())
        return QStringLiteral("Выберите узел, ссылки на который заменить.");
    return m_to.isValid() ? QString()
                          : QStringLiteral("Выберите узел, на который ссылки будут вести.");
}

void ReplaceDialog::count()
{
    const std::size_t chosen = m_model->plan().chosen().size();
    const QString lacking = whatLacks();
    m_summary->setText(lacking.isEmpty() ? QStringLiteral("Ссылок найдено: %1, будет заменено: %2")
                                               .arg(m_model->plan().links().size())
                                               .arg(chosen)
                                         : lacking);
    m_ok->setEnabled(chosen > 0);
}

void ReplaceDialog::accept()
{
    const auto links = m_model->plan().chosen();
    if (links.empty())
        return;
    if (m_workspace.push(new Utils::ReplaceLinksCommand(links)))
        QDialog::accept();
}

} // namespace Editor
