#include "editor/properties/values/TimeEditor.h"

#include <QTimeEdit>

namespace Editor {

namespace {

const QString format = QStringLiteral("HH:mm:ss");

}

TimeEditor::TimeEditor(const ValueContext &context, QWidget *parent)
    : ValueEditor(context, parent), m_time(new QTimeEdit(this))
{
    m_time->setDisplayFormat(format);
    m_time->setFrame(false);
    setMain(m_time);
    connect(m_time, &QTimeEdit::timeChanged, this, [this](const QTime &time) {
        m_text = time.toString(format);
        touch();
    });
}

TimeEditor::~TimeEditor() = default;

void TimeEditor::setText(const QString &text)
{
    const QSignalBlocker block(m_time);
    m_text = text;
    const QTime time = QTime::fromString(text, format);
    m_time->setTime(time.isValid() ? time : QTime::fromString(text, QStringLiteral("HH:mm")));
}

QString TimeEditor::text() const
{
    return m_text;
}

} // namespace Editor
