#include "widgets/events/details/AlarmNoteDialog.h"

#include "widgets/dialogs/DialogLook.h"
#include "widgets/dialogs/Dialogs.h"
#include "widgets/dialogs/TimeDialog.h"
#include "widgets/dialogs/VirtualKeyboard.h"
#include "widgets/events/AlarmSpans.h"

#include <QBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextBlock>

namespace Widgets {

namespace {

constexpr int margin = 16;
constexpr int gap = 8;
constexpr int noteHeight = 96;
constexpr int leastWidth = 480;
using Axis = Nodes::widgetChartAxis;

QLabel *makeLabel(QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    MakeLegible(*label);
    return label;
}

} // namespace

AlarmNoteDialog::AlarmNoteDialog(QWidget *parent)
    : BasicDialog(parent),
      m_subject(makeLabel(this)),
      m_prompt(makeLabel(this)),
      m_note(new QPlainTextEdit(this)),
      m_lack(makeLabel(this))
{
    ApplyDialogLook(*this);
    build();
    follow();
}

void AlarmNoteDialog::build()
{
    QFont bold = m_subject->font();
    bold.setBold(true);
    m_subject->setFont(bold);
    m_subject->setMinimumWidth(leastWidth);
    m_note->setObjectName(QStringLiteral("note"));
    m_note->setTabChangesFocus(true);
    m_note->setMinimumHeight(noteHeight);
    MakeLegible(*m_note);
    m_spanRow = makeSpans();
    m_spanRow->hide();
    m_lack->setObjectName(QStringLiteral("lack"));
    auto *keyboard = new QPushButton(this);
    keyboard->setFixedSize(TouchSize, TouchSize);
    keyboard->setIcon(QIcon(QStringLiteral(":/icons/dialogs/keyboard.svg")));
    keyboard->setIconSize({28, 28});
    keyboard->setToolTip(QStringLiteral("Клавиатура: пишет в строку с курсором"));
    keyboard->setAutoDefault(false);
    keyboard->setFocusPolicy(Qt::NoFocus); // the next after the note is to accept it
    auto *written = new QHBoxLayout;
    written->setSpacing(gap);
    written->addWidget(m_note, 1);
    written->addWidget(keyboard, 0, Qt::AlignTop);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(margin, margin, margin, margin);
    column->setSpacing(gap);
    column->addWidget(m_subject);
    column->addWidget(m_spanRow);
    column->addWidget(m_prompt);
    column->addLayout(written, 1);
    column->addWidget(m_lack);
    column->addLayout(makeButtons());
    connect(keyboard, &QPushButton::clicked, this, &AlarmNoteDialog::openKeyboard);
    connect(m_note, &QPlainTextEdit::textChanged, this, &AlarmNoteDialog::follow);
    m_note->setFocus();
}

QBoxLayout *AlarmNoteDialog::makeButtons()
{
    m_accept = new QPushButton(this);
    m_accept->setObjectName(QStringLiteral("accept"));
    m_accept->setDefault(true);
    auto *cancel = new QPushButton(QStringLiteral("Отмена"), this);
    cancel->setAutoDefault(false);
    MakeTouchable(*cancel);
    connect(m_accept, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    auto *row = new QHBoxLayout;
    row->setSpacing(gap);
    row->addStretch();
    row->addWidget(m_accept);
    row->addWidget(cancel);
    return row;
}

QWidget *AlarmNoteDialog::makeSpans()
{
    auto *widget = new QWidget(this);
    auto *row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(gap);
    addSpan(*row, QStringLiteral("15 мин"), 15 * 60);
    addSpan(*row, QStringLiteral("1 ч"), 3600);
    addSpan(*row, QStringLiteral("8 ч"), 8 * 3600);
    m_free = addSpan(*row, QStringLiteral("Другое время…"), 0);
    row->addStretch();
    return widget;
}

QPushButton *AlarmNoteDialog::addSpan(QBoxLayout &row, const QString &text, int seconds)
{
    auto *button = new QPushButton(text, this);
    button->setCheckable(true);
    button->setAutoDefault(false);
    MakeTouchable(*button);
    row.addWidget(button);
    m_spans.emplace_back(button, seconds);
    connect(button, &QPushButton::clicked, this, [this, seconds] {
        if (seconds > 0)
            m_span = seconds;
        else
            chooseFree();
        showSpan();
    });
    return button;
}

void AlarmNoteDialog::chooseFree()
{
    DialogRequest request;
    request.parent = this;
    request.element = m_free;
    const OwnedDialog<TimeDialog> dialog(request);
    dialog->setTime(30, Axis::RangeMinutes);
    dialog->setMaxRange(LongestSpan, Axis::RangeSeconds);
    const QPointer<AlarmNoteDialog> self = this;
    if (dialog->exec() != QDialog::Accepted || !dialog || !self)
        return;
    const TimeDialog::Time time = dialog->getTime();
    m_span = int(Axis::Milliseconds(time.count, time.unit) / 1000);
}

void AlarmNoteDialog::showSpan()
{
    bool isOffered = false;
    for (const auto &[button, seconds] : m_spans) {
        button->setChecked(seconds == m_span);
        isOffered = isOffered || seconds == m_span;
    }
    m_free->setChecked(!isOffered);
    m_free->setText(isOffered ? QStringLiteral("Другое время…")
                              : AlarmSpans::text(Nodes::Timestamp(m_span) * 1000000));
}

void AlarmNoteDialog::ask(const QString &title, const QString &subject, const QString &prompt,
                          const QString &action)
{
    setWindowTitle(title);
    m_subject->setText(subject);
    m_prompt->setText(prompt);
    m_accept->setText(action);
    MakeTouchable(*m_accept);
}

void AlarmNoteDialog::requireNote()
{
    m_isNoteRequired = true;
    follow();
}

void AlarmNoteDialog::offerSpans()
{
    m_spanRow->show();
    m_span = m_spans.front().second;
    showSpan();
}

QString AlarmNoteDialog::note() const
{
    return m_note->toPlainText().trimmed();
}

// The keyboard has one line: it writes that with the cursor.
void AlarmNoteDialog::openKeyboard()
{
    DialogRequest request;
    request.parent = this;
    request.element = m_note;
    const OwnedDialog<VirtualKeyboard> keyboard(request);
    const int rest = LongestNote - m_note->toPlainText().size();
    const QString line = m_note->textCursor().block().text();
    keyboard->configure(line, line.size() + rest, false);
    const QPointer<AlarmNoteDialog> self = this;
    if (rest < 0 || keyboard->exec() != QDialog::Accepted || !keyboard || !self)
        return;
    QTextCursor cursor = m_note->textCursor();
    cursor.select(QTextCursor::BlockUnderCursor);
    const bool isFirst =
        cursor.blockNumber() == 0 && !cursor.selectedText().startsWith(QChar::ParagraphSeparator);
    cursor.insertText((isFirst ? QString() : QStringLiteral("\n")) + keyboard->getData());
}

void AlarmNoteDialog::follow()
{
    const bool isLong = note().size() > LongestNote;
    const bool isMissing = m_isNoteRequired && note().isEmpty();
    m_accept->setEnabled(!isLong && !isMissing);
    m_lack->setVisible(isLong || isMissing);
    m_lack->setText(
        isLong
            ? QStringLiteral("Слишком длинно: %1 знаков из %2").arg(note().size()).arg(LongestNote)
            : QStringLiteral("Укажите причину: без неё действие не выполняется"));
}

} // namespace Widgets
