#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/dialogs/BasicDialog.h"

#include <vector>

class QBoxLayout;
class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace Widgets {

/// Asks an operator for a note about an alarm, of several lines if need be: the comment of an
/// acknowledgement, or the reason why it is hidden, and then for how long. GUI thread.
class WIDGETS_EXPORT AlarmNoteDialog : public BasicDialog
{
    Q_OBJECT

public:
    static constexpr const char *Key = "alarmNote";
    static constexpr int LongestNote = 500;       ///< characters
    static constexpr int LongestSpan = 24 * 3600; ///< s

    explicit AlarmNoteDialog(QWidget *parent = nullptr);

    /// `subject` says which alarm, `prompt` what is asked for, `action` stands on the button.
    void ask(const QString &title, const QString &subject, const QString &prompt,
             const QString &action);
    /// Without a note it is not accepted.
    void requireNote();
    /// Lets one of several lengths of time be chosen, or a free one. The first is chosen.
    void offerSpans();

    QString note() const;
    /// Seconds chosen; 0 when none was asked for.
    int span() const { return m_span; }

private:
    void build();
    QBoxLayout *makeButtons();
    QWidget *makeSpans();
    QPushButton *addSpan(QBoxLayout &row, const QString &text, int seconds);
    void chooseFree();
    void showSpan();
    void openKeyboard();
    void follow();

    QLabel *m_subject;
    QWidget *m_spanRow = nullptr;
    QLabel *m_prompt;
    QPlainTextEdit *m_note;
    QLabel *m_lack;
    QPushButton *m_accept = nullptr;
    QPushButton *m_free = nullptr;
    std::vector<std::pair<QPushButton *, int>> m_spans; // with seconds
    int m_span = 0;
    bool m_isNoteRequired = false;
};

} // namespace Widgets
