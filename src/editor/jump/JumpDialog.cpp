#include "editor/jump/JumpDialog.h"

#include "editor/jump/JumpModel.h"
#include "editor/workspace/KeyboardAccess.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>

namespace Editor {

namespace {

constexpr QSize wanted(680, 440);
constexpr int nameShare = 45; // % of the width

void setUp(QTreeView &rows, JumpModel &model)
{
    rows.setModel(&model);
    rows.setRootIsDecorated(false);
    rows.setUniformRowHeights(true);
    rows.setHeaderHidden(true);
    rows.setAllColumnsShowFocus(true);
    rows.setTextElideMode(Qt::ElideMiddle); // the end of a path tells most
    rows.setFocusPolicy(Qt::NoFocus);       // the keys stay in the line
    rows.header()->setStretchLastSection(true);
    rows.header()->resizeSection(JumpModel::ColumnName, wanted.width() * nameShare / 100);
    rows.setAccessibleName(QStringLiteral("Найденное"));
}

} // namespace

JumpDialog::JumpDialog(JumpModel *model, QWidget *parent)
    : QDialog(parent),
      m_model(model),
      m_text(new QLineEdit(this)),
      m_rows(new QTreeView(this)),
      m_count(new QLabel(this))
{
    m_model->setParent(this);
    setWindowTitle(QStringLiteral("Быстрый переход"));
    KeyboardAccess::makeSearchLine(
        *m_text, QStringLiteral("Имя, путь, #номер или команда; > — только команды"));
    m_text->installEventFilter(this);
    setUp(*m_rows, *m_model);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_text);
    layout->addWidget(m_rows, 1);
    layout->addWidget(m_count);
    connect(m_text, &QLineEdit::textChanged, this, &JumpDialog::search);
    connect(m_rows, &QTreeView::clicked, this, [this] { take(false); });
    place();
    search(QString());
}

// Near the top of the window that it belongs to, where what is looked at shows below it.
void JumpDialog::place()
{
    const QWidget *window = parentWidget() ? parentWidget()->window() : nullptr;
    if (!window) {
        resize(wanted);
        return;
    }
    resize(wanted.boundedTo(window->size() * 9 / 10));
    const QRect free = window->geometry();
    move(free.center().x() - width() / 2, free.top() + free.height() / 8);
}

void JumpDialog::search(const QString &text)
{
    m_model->search(text);
    const int rows = m_model->rowCount();
    int first = 0;
    while (first < rows && !(m_model->index(first, 0).flags() & Qt::ItemIsEnabled))
        ++first;
    m_rows->setCurrentIndex(m_model->index(first < rows ? first : 0, 0));
    m_count->setText(found(text));
}

QString JumpDialog::found(const QString &text) const
{
    const int rows = m_model->rowCount();
    if (text.trimmed().isEmpty() && rows == 0)
        return QStringLiteral("Наберите часть имени.");
    if (rows == 0)
        return QStringLiteral("Ничего не найдено.");
    const QString keys = QStringLiteral(".   Enter — открыть, Ctrl+Enter — показать в дереве");
    if (text.trimmed().isEmpty())
        return QStringLiteral("Последние документы") + keys;
    if (std::size_t(rows) == m_model->count())
        return QStringLiteral("Найдено %1").arg(rows) + keys;
    return QStringLiteral("Найдено %L1, показаны ближайшие %2").arg(m_model->count()).arg(rows) +
           keys;
}

void JumpDialog::take(bool isToBeShown)
{
    const QModelIndex index = m_rows->currentIndex();
    if (!(index.flags() & Qt::ItemIsEnabled))
        return; // nothing found, or not possible now
    m_node = m_model->node(index.row());
    m_command = m_model->command(index.row());
    m_isToBeShown = isToBeShown;
    accept();
}

bool JumpDialog::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_text || event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    auto *keys = static_cast<QKeyEvent *>(event);
    switch (keys->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        QCoreApplication::sendEvent(m_rows, event);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        take(keys->modifiers().testFlag(Qt::ControlModifier));
        return true;
    default:
        return QDialog::eventFilter(watched, event);
    }
}

} // namespace Editor
