#include "editor/properties/texts/ExpressionWindow.h"

#include "editor/properties/texts/CodeEdit.h"
#include "editor/properties/texts/TrialPanel.h"
#include "editor/properties/texts/WordCompleter.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QSortFilterProxyModel>
#include <QSplitter>
#include <QStandardItemModel>
#include <QStyledItemDelegate>
#include <QTreeView>
#include <QVBoxLayout>

namespace Editor {

namespace {

constexpr QSize multiLineSize(900, 560);
constexpr QSize oneLineSize(760, 380);
constexpr int oneLineHeight = 64;
constexpr int wordWidth = 130;
constexpr std::size_t mostShown = 3;

/// Of a path, both ends tell.
class PathDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        option->textElideMode = Qt::ElideMiddle;
    }
};

} // namespace

ExpressionWindow::ExpressionWindow(const Nodes::TextLanguage &language, const Nodes::NodeLink &node,
                                   QWidget *parent)
    : ExpressionWindow(language, node, new CodeEdit(language, node, nullptr), parent)
{
}

ExpressionWindow::ExpressionWindow(const Nodes::TextLanguage &language, const Nodes::NodeLink &node,
                                   CodeEdit *edit, QWidget *parent)
    : TextWindow(edit, parent),
      m_edit(edit),
      m_problems(new QLabel(this)),
      m_trial(new TrialPanel(language, node, this))
{
    auto *help = new QLabel(QString::fromUtf8(language.help), this);
    help->setWordWrap(true);
    if (!language.isMultiLine)
        m_edit->setMaximumHeight(oneLineHeight);
    m_problems->setTextFormat(Qt::RichText);
    m_problems->setWordWrap(true);
    auto *left = new QWidget(this);
    auto *column = new QVBoxLayout(left);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_edit, 1);
    column->addWidget(m_problems);
    column->addWidget(m_trial);
    if (!language.isMultiLine)
        column->addStretch(1);
    auto *split = new QSplitter(this);
    split->addWidget(left);
    split->addWidget(makeWords());
    split->setStretchFactor(0, 3);
    split->setStretchFactor(1, 2);
    split->setChildrenCollapsible(false);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(help);
    layout->addWidget(split, 1);
    layout->addWidget(makeButtons());
    connect(m_edit, &CodeEdit::checked, this, &ExpressionWindow::showProblems);
    connect(m_edit, &CodeEdit::taken, this, &QDialog::accept);
    connect(m_problems, &QLabel::linkActivated, this, [this](const QString &link) {
        m_edit->goTo(m_edit->problems()[std::size_t(link.toInt())]);
    });
    resize(language.isMultiLine ? multiLineSize : oneLineSize);
    m_edit->setFocus();
}

ExpressionWindow::~ExpressionWindow() = default;

QWidget *ExpressionWindow::makeWords()
{
    auto *side = new QWidget(this);
    auto *filter = new QLineEdit(side);
    filter->setPlaceholderText(QStringLiteral("Найти имя или функцию"));
    filter->setClearButtonEnabled(true);
    auto *rows = new QSortFilterProxyModel(side);
    rows->setSourceModel(m_edit->completer()->words());
    rows->setFilterKeyColumn(-1);
    rows->setFilterCaseSensitivity(Qt::CaseInsensitive);
    auto *list = new QTreeView(side);
    list->setModel(rows);
    list->setRootIsDecorated(false);
    list->setHeaderHidden(true);
    list->setUniformRowHeights(true);
    list->setAccessibleName(QStringLiteral("Что можно написать"));
    list->header()->setStretchLastSection(true);
    list->setItemDelegateForColumn(0, new PathDelegate(list));
    list->header()->resizeSection(0, wordWidth);
    auto *layout = new QVBoxLayout(side);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(filter);
    layout->addWidget(list);
    connect(filter, &QLineEdit::textChanged, rows, &QSortFilterProxyModel::setFilterFixedString);
    connect(list, &QTreeView::activated, this, [this](const QModelIndex &index) {
        m_edit->insertWord(index.sibling(index.row(), 0).data().toString());
        m_edit->setFocus();
    });
    return side;
}

void ExpressionWindow::setText(const QString &text)
{
    TextWindow::setText(text);
    m_edit->moveCursor(text.contains(QLatin1Char('\n')) ? QTextCursor::Start : QTextCursor::End);
    if (text.isEmpty())
        showProblems();
}

void ExpressionWindow::showProblems()
{
    const auto &problems = m_edit->problems();
    QStringList lines;
    bool hasError = false;
    for (std::size_t i = 0; i < problems.size(); ++i) {
        const Nodes::TextProblem &problem = problems[i];
        hasError = hasError || !problem.isRemark;
        if (i < mostShown)
            lines << QStringLiteral("%1 <a href=\"%2\">%3</a>: %4")
                         .arg(problem.isRemark ? QStringLiteral("⚠") : QStringLiteral("✖"))
                         .arg(i)
                         .arg(m_edit->placeOf(problem),
                              QString::fromStdString(problem.message).toHtmlEscaped());
    }
    if (problems.size() > mostShown)
        lines << QStringLiteral("и ещё %1").arg(problems.size() - mostShown);
    if (lines.isEmpty())
        lines << (text().trimmed().isEmpty() ? QStringLiteral("Пусто")
                                             : QStringLiteral("✓ Ошибок нет"));
    m_problems->setText(lines.join(QLatin1String("<br>")));
    m_trial->setText(text(), hasError);
}

} // namespace Editor
