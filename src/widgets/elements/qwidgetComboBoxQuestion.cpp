// The question before a choice is written, and what ends a choice that nobody finishes.
#include "widgets/dialogs/PlainMessageBox.h"
#include "widgets/elements/input/InputNotice.h"
#include "widgets/elements/input/ValueWriter.h"
#include "widgets/elements/qwidgetComboBox.h"

#include "nodes/model/services/AccessCheck.h"
#include "nodes/visual/elements/widgetComboBox.h"

namespace Widgets {

// The answer counts for who chose, where he chose.
bool qwidgetComboBox::confirmed(int index)
{
    const QPointer<qwidgetComboBox> alive(this);
    const std::string user = Nodes::UserNameFor(*m_comboBox);
    const auto question = ValueWriter::question(itemText(index), *this);
    if (!ask(*question) || !alive || !m_comboBox)
        return false;
    const bool isSameUser = user == Nodes::UserNameFor(*m_comboBox);
    if (isSameUser && isActive())
        return true;
    InputNotice::show(*this, isSameUser
                                 ? QStringLiteral("Значение не записано. Список скрыт.")
                                 : QStringLiteral("Значение не записано. Сменился пользователь."));
    return false;
}

bool qwidgetComboBox::ask(QDialog &question)
{
    const QPointer<qwidgetComboBox> alive(this);
    m_question = &question;
    m_isTimeUp = false;
    restartLimit();
    const bool answer = question.exec() == QMessageBox::Ok;
    if (!alive)
        return false;
    m_question = nullptr;
    m_limit.stop();
    if (m_isTimeUp)
        InputNotice::show(*this, QStringLiteral("Значение не записано. Время выбора вышло."));
    return answer && !m_isTimeUp;
}

void qwidgetComboBox::restartLimit()
{
    if (m_comboBox && m_comboBox->GetEditTimeout() > 0 && (m_isListOpen || m_question))
        m_limit.start(m_comboBox->GetEditTimeout() * 1000);
}

void qwidgetComboBox::onTimeLimit()
{
    if (m_question) {
        m_isTimeUp = true;
        m_question->reject();
    } else if (m_isListOpen) {
        hidePopup(); // what stands below it is seen again; nothing was chosen
    }
}

} // namespace Widgets
