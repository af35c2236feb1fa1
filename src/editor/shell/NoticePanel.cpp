#include "editor/shell/NoticePanel.h"

#include "editor/shell/NoticeBar.h"

#include "utils/convert/PlainTip.h"

#include <QClipboard>
#include <QDateTime>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QShortcut>
#include <QStyle>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace Editor {

namespace {

enum Column { ColumnTime, ColumnText };

QString nameOf(Workspace::Level level)
{
    switch (level) {
    case Workspace::Info:
        return QStringLiteral("Сведения");
    case Workspace::Warning:
        return QStringLiteral("Предупреждение");
    case Workspace::Error:
        break;
    }
    return QStringLiteral("Ошибка");
}

} // namespace

NoticePanel::NoticePanel(Workspace &workspace, QWidget *parent)
    : QWidget(parent),
      m_rows(new QTreeWidget(this)),
      m_copy(new QPushButton(tr("Копировать"), this)),
      m_clear(new QPushButton(tr("Очистить"), this))
{
    m_rows->setHeaderLabels({tr("Время"), tr("Сообщение")});
    m_rows->setAccessibleName(tr("Сообщения"));
    m_rows->setRootIsDecorated(false);
    m_rows->setAlternatingRowColors(true);
    m_rows->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_rows->setWordWrap(true);
    m_rows->header()->setSectionResizeMode(ColumnTime, QHeaderView::ResizeToContents);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(m_copy);
    buttons->addWidget(m_clear);
    buttons->addStretch(1);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(m_rows, 1);
    layout->addLayout(buttons);
    setFocusProxy(m_rows);
    m_copy->setToolTip(tr("Выделенные строки, без выделения — все"));
    auto *keys = new QShortcut(QKeySequence::Copy, m_rows);
    keys->setContext(Qt::WidgetShortcut);
    connect(keys, &QShortcut::activated, this, &NoticePanel::copy);
    connect(m_copy, &QPushButton::clicked, this, &NoticePanel::copy);
    connect(m_clear, &QPushButton::clicked, this, &NoticePanel::clear);
    connect(&workspace, &Workspace::told, this, &NoticePanel::add);
    clear();
}

void NoticePanel::add(Workspace::Level level, const QString &text)
{
    auto *row = new QTreeWidgetItem(
        {QDateTime::currentDateTime().toString(QStringLiteral("dd.MM HH:mm:ss")), text});
    QIcon &mark = m_marks[level]; // rows of a long day share it
    if (mark.isNull())
        mark = style()->standardIcon(NoticeBar::markOf(level), nullptr, this);
    row->setIcon(ColumnTime, mark);
    row->setData(ColumnTime, Qt::AccessibleDescriptionRole, nameOf(level));
    row->setToolTip(ColumnTime, nameOf(level));
    row->setToolTip(ColumnText, Utils::PlainTip(text));
    m_rows->insertTopLevelItem(0, row);
    if (m_rows->topLevelItemCount() > keptAtMost)
        delete m_rows->takeTopLevelItem(keptAtMost);
    m_copy->setEnabled(true);
    m_clear->setEnabled(true);
}

void NoticePanel::copy() const
{
    const bool isAll = m_rows->selectedItems().isEmpty();
    QStringList lines;
    for (int i = 0; i < m_rows->topLevelItemCount(); ++i) {
        const QTreeWidgetItem &row = *m_rows->topLevelItem(i);
        if (isAll || row.isSelected())
            lines << QStringList{row.text(ColumnTime), row.toolTip(ColumnTime),
                                 row.text(ColumnText)}
                         .join(QLatin1Char('\t'));
    }
    QGuiApplication::clipboard()->setText(lines.join(QLatin1Char('\n')));
}

void NoticePanel::clear()
{
    m_rows->clear();
    m_copy->setEnabled(false);
    m_clear->setEnabled(false);
}

} // namespace Editor
