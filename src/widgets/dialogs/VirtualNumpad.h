#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/dialogs/BasicDialog.h"

#include <QLineEdit>

#include <memory>

namespace Widgets {

class VirtualNumpadForm;

/// On-screen keys for one number. The keys reach the field as key events, so that its validator
/// decides on them as on those of the hardware keyboard. When exec() gives Accepted, getValue() is
/// the number. GUI thread.
class WIDGETS_EXPORT VirtualNumpad : public BasicDialog
{
    Q_OBJECT

public:
    static constexpr const char *Key = "numpad";

    explicit VirtualNumpad(QWidget *parent = nullptr);
    ~VirtualNumpad() override;

    /// Shows six significant digits.
    void setValue(double value);
    double getValue();
    /// Shows a number with all its digits; empty text for none.
    void setText(const QString &number);
    QString text() const;
    void setEchoMode(QLineEdit::EchoMode mode);
    /// Replaces the one that admits decimal numbers. Not owned; null admits everything.
    void setValidator(QValidator const *validator);
    /// Shows the value of now above the field, for who is asked for another one; "" hides it.
    void showCurrent(const QString &text);
    /// Says why a key had no effect, until the text changes.
    void showHint(const QString &hint);

signals:
    /// A key was refused by the validator.
    void inputRejected();

private slots:
    void keyPress();
    void on_keyCancel_clicked();
    void on_lineEdit_returnPressed();

private:
    void connectKeys();
    /// Enter can be pressed while the text is a whole number, not "-" or "12.".
    void updateEnter();

    std::unique_ptr<VirtualNumpadForm> m_form;
};

} // namespace Widgets
