#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/dialogs/DialogManners.h"

#include <QMessageBox>

#include <functional>

namespace Widgets {

/// Every message box of the station: names, values and errors come from projects and devices and
/// are shown letter by letter, never as markup. GUI thread.
class WIDGETS_EXPORT PlainMessageBox : public QMessageBox, public DialogManners
{
    Q_OBJECT

public:
    static constexpr const char *Key = "message";

    explicit PlainMessageBox(QWidget *parent = nullptr);
    PlainMessageBox(Icon icon, const QString &title, const QString &text,
                    StandardButtons buttons = Ok, QWidget *parent = nullptr);

    /// Says it; nothing waits for it to be read.
    static void tell(Icon icon, const QString &title, const QString &text,
                     QWidget *parent = nullptr);
    /// Waits for the answer: the button pressed. Only where nothing can go on without one, because
    /// the caller goes on in a loop of events inside of its own call.
    static StandardButton ask(Icon icon, const QString &title, const QString &text,
                              StandardButtons buttons = Ok, QWidget *parent = nullptr,
                              StandardButton preset = NoButton);
    /// Makes the box such a question, whose yes (Ok) reads `yes`. A key pressed by reflex says no.
    void setQuestion(const QString &title, const QString &text, const QString &yes);
    /// Shows it, and calls `onYes` when it was answered with the first button: Ok or Yes. It then
    /// deletes itself. Nothing waits for it.
    void askFor(std::function<void()> onYes);

protected:
    void showEvent(QShowEvent *event) override;

private:
    void fill(Icon icon, const QString &title, const QString &text, StandardButtons buttons);
};

} // namespace Widgets
