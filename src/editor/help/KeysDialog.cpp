#include "editor/help/KeysDialog.h"

#include "editor/shell/MenuEntries.h"
#include "editor/tree/TreeCommands.h"
#include "editor/workspace/KeyboardAccess.h"

#include <QAction>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QKeySequence>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace Editor {

namespace {

struct Keys
{
    const char *place;
    const char *what;
    const char *keys;
};

// Those that no menu has.
const Keys others[] = {
    {"Сцена", "Сдвинуть выделенное на 1 пиксел", "Стрелки"},
    {"Сцена", "Изменить ширину или высоту на 1 пиксел", "Shift+стрелки"},
    {"Сцена", "Следующий, предыдущий элемент", "Tab, Shift+Tab"},
    {"Сцена", "Отменить перетаскивание, выйти из группы, снять выделение", "Esc"},
    {"Сцена", "Без привязки, пока перетаскивается", "Alt"},
    {"Сцена", "Войти в группу", "Двойной щелчок"},
    {"Сцена", "Взять один элемент группы или то, что лежит ниже", "Alt+щелчок"},
    {"Сцена", "Масштаб", "Ctrl+колесо"},
    {"Сцена", "Сдвинуть вид", "Средняя кнопка, колесо, Alt+колесо"},
    {"Свойства", "Править значение", "Enter, F2"},
    {"Свойства", "Принять и перейти дальше, назад", "Tab, Shift+Tab"},
    {"Свойства", "Оставить как было", "Esc"},
    {"Свойства", "Открыть окно выбора", "Alt+Вниз"},
    {"Свойства", "Вернуть значение по умолчанию", "Ctrl+Backspace"},
};

} // namespace

KeysDialog::KeysDialog(QWidget *parent)
    : QDialog(parent), m_search(new QLineEdit(this)), m_rows(new QTreeWidget(this))
{
    setWindowTitle(QStringLiteral("Клавиши"));
    resize(760, 640);
    KeyboardAccess::makeSearchLine(*m_search, QStringLiteral("Поиск по действию или клавишам"));
    m_rows->setAccessibleName(windowTitle());
    m_rows->setHeaderLabels({QStringLiteral("Действие"), QStringLiteral("Клавиши")});
    m_rows->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_rows->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    m_rows->header()->setStretchLastSection(false);
    auto *buttons = new QDialogButtonBox(this);
    QPushButton *close =
        buttons->addButton(QStringLiteral("Закрыть"), QDialogButtonBox::RejectRole);
    close->setAutoDefault(false);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_search);
    layout->addWidget(m_rows, 1);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_search, &QLineEdit::textChanged, this, &KeysDialog::search);
    for (const TreeCommand &command : TreeCommands()) {
        if (command.text && *command.keys)
            add(*group(QStringLiteral("Дерево проекта")), QString::fromUtf8(command.text),
                QKeySequence(QString::fromUtf8(command.keys))
                    .toString(QKeySequence::NativeText)
                    .replace(QStringLiteral("Return"), QStringLiteral("Enter")));
    }
    for (const Keys &keys : others)
        add(*group(QString::fromUtf8(keys.place)), QString::fromUtf8(keys.what),
            QString::fromUtf8(keys.keys));
}

QTreeWidgetItem *KeysDialog::group(const QString &title)
{
    for (int i = 0; i < m_rows->topLevelItemCount(); ++i) {
        if (m_rows->topLevelItem(i)->text(0) == title)
            return m_rows->topLevelItem(i);
    }
    auto *made = new QTreeWidgetItem(m_rows, {title});
    QFont font = made->font(0);
    font.setBold(true);
    made->setFont(0, font);
    made->setFirstColumnSpanned(true);
    made->setExpanded(true);
    return made;
}

void KeysDialog::add(QTreeWidgetItem &below, const QString &what, const QString &keys)
{
    new QTreeWidgetItem(&below, {what, keys});
}

void KeysDialog::addMenus(const QMainWindow &window)
{
    const QVector<MenuEntry> entries = MenuEntries(window);
    for (const MenuEntry &entry : entries) {
        QStringList keys;
        for (const QKeySequence &sequence : entry.action->shortcuts())
            keys << sequence.toString(QKeySequence::NativeText);
        if (!keys.isEmpty())
            add(*group(entry.place.section(QLatin1Char('/'), 0, 0)), entry.text,
                keys.join(QStringLiteral(", ")));
    }
}

void KeysDialog::search(const QString &text)
{
    for (int i = 0; i < m_rows->topLevelItemCount(); ++i) {
        QTreeWidgetItem *top = m_rows->topLevelItem(i);
        int shown = 0;
        for (int row = 0; row < top->childCount(); ++row) {
            const QTreeWidgetItem &item = *top->child(row);
            const bool isFound = item.text(0).contains(text, Qt::CaseInsensitive) ||
                                 item.text(1).contains(text, Qt::CaseInsensitive);
            top->child(row)->setHidden(!isFound);
            shown += isFound ? 1 : 0;
        }
        top->setHidden(shown == 0);
    }
}

} // namespace Editor
