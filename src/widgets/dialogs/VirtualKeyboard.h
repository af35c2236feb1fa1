#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/dialogs/BasicDialog.h"

#include <QLineEdit>
#include <QVariant>

#include <memory>

namespace Widgets {

class VirtualKeyboardForm;

/// On-screen keyboard for text, English and Russian. Made for one input: set it up, exec(), and
/// when the result is Accepted read getData(). The hardware keyboard types into the same field.
/// GUI thread.
class WIDGETS_EXPORT VirtualKeyboard : public BasicDialog
{
    Q_OBJECT

public:
    static constexpr const char *Key = "keyboard";

    explicit VirtualKeyboard(QWidget *parent = nullptr);
    ~VirtualKeyboard() override;

    /// Shows `value` as text of at most `maxLength` characters; 0 and less: no limit. Enter
    /// accepts; the third argument has no effect.
    void configure(QVariant value, int maxLength, bool isMultiLine);
    QString getData();
    void setEchoMode(QLineEdit::EchoMode mode);
    /// Holds for both keyboards: a text that the validator calls invalid cannot be typed. Not
    /// owned; null admits everything.
    void setValidator(QValidator const *validator);

    /// Shows the value of now above the field, for who is asked for another one; "" hides it.
    void showCurrent(const QString &text);

    void accept() override;

signals:
    /// The text that was accepted, before the dialog ends; the pointer is good during the call.
    void dataSet(QVariant *value);

protected:
    void resizeEvent(QResizeEvent *event) override;

private slots:
    void onButtonClicked();
    void backspaceClicked();
    void enterClicked();
    void changeLanguage();
    void changeShiftMode(bool isOn);
    void changeCapsMode(bool isOn);
    void addText(QString text);
    void updateKeys();

private:
    void connectKeys();
    bool isAdmitted(QString text, int cursor) const;

    std::unique_ptr<VirtualKeyboardForm> m_form;
    QList<QPushButton *> m_keys;
    bool m_isMultiLine = false;
    bool m_isShift = false;
    bool m_isCaps = false;
};

} // namespace Widgets
