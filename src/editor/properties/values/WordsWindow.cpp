#include "editor/properties/values/WordsWindow.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

#include <algorithm>

namespace Editor {

namespace {

QString nameOf(const std::vector<Nodes::PropertyChoice> &choices, const QString &token)
{
    const auto found = std::find_if(choices.begin(), choices.end(), [&](const auto &choice) {
        return choice.token == token.toStdString();
    });
    return found == choices.end() ? token : QString::fromStdString(found->nameRu);
}

} // namespace

WordsWindow::WordsWindow(const std::vector<Nodes::PropertyChoice> &choices, const QString &text,
                         QWidget *parent)
    : QDialog(parent), m_list(new QListWidget(this))
{
    setAttribute(Qt::WA_DeleteOnClose);
    m_list->setDragDropMode(QAbstractItemView::InternalMove);
    m_list->setAccessibleName(QStringLiteral("Порядок"));
    QStringList tokens = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    tokens.removeDuplicates();
    for (const QString &token : tokens)
        add(token, nameOf(choices, token), true);
    for (const Nodes::PropertyChoice &choice : choices) {
        const QString token = QString::fromStdString(choice.token);
        if (!tokens.contains(token))
            add(token, QString::fromStdString(choice.nameRu), false);
    }
    m_list->setCurrentRow(0);
    auto *row = new QHBoxLayout;
    const std::pair<const char *, int> moves[] = {{"Выше", -1}, {"Ниже", 1}};
    for (const auto &[name, rows] : moves) {
        auto *button = new QPushButton(QString::fromUtf8(name), this);
        const QKeySequence keys(Qt::CTRL + (rows < 0 ? Qt::Key_Up : Qt::Key_Down));
        button->setToolTip(keys.toString(QKeySequence::NativeText));
        button->setAutoDefault(false);
        // Not the button's own: that is deaf while it shows that it is pressed.
        connect(new QShortcut(keys, this), &QShortcut::activated, this,
                [this, by = rows] { move(by); });
        connect(button, &QPushButton::clicked, this, [this, by = rows] { move(by); });
        row->addWidget(button);
    }
    row->addStretch(1);
    auto *buttons = new QDialogButtonBox(this);
    buttons->addButton(QStringLiteral("Применить"), QDialogButtonBox::AcceptRole);
    buttons->addButton(QStringLiteral("Отмена"), QDialogButtonBox::RejectRole);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_list);
    layout->addLayout(row);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    resize(340, 380);
}

WordsWindow::~WordsWindow() = default;

void WordsWindow::add(const QString &token, const QString &name, bool isTicked)
{
    auto *item = new QListWidgetItem(name, m_list);
    item->setData(Qt::UserRole, token);
    item->setFlags((item->flags() | Qt::ItemIsUserCheckable) & ~Qt::ItemIsDropEnabled);
    item->setCheckState(isTicked ? Qt::Checked : Qt::Unchecked);
}

void WordsWindow::move(int rows)
{
    const int from = m_list->currentRow();
    const int to = from + rows;
    if (from < 0 || to < 0 || to >= m_list->count())
        return;
    m_list->insertItem(to, m_list->takeItem(from));
    m_list->setCurrentRow(to);
}

QString WordsWindow::text() const
{
    QStringList tokens;
    for (int i = 0; i < m_list->count(); ++i) {
        if (m_list->item(i)->checkState() == Qt::Checked)
            tokens << m_list->item(i)->data(Qt::UserRole).toString();
    }
    return tokens.join(QLatin1Char(' '));
}

} // namespace Editor
