#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/dialogs/DialogRequest.h"

#include <QPointer>
#include <QWidget>

class QKeyEvent;

namespace Widgets {

/// What all dialogs have in common, as their second base: that they come up wholly on
/// the display of whoever asked, and what Enter does. The first base is the kind of window that Qt
/// has for them. What belongs to the desktop is not here: there every modal window gets its owner
/// and its place beside the alarm window. GUI thread.
class WIDGETS_EXPORT DialogManners
{
public:
    /// `dialog` is the object that has this base.
    explicit DialogManners(QWidget &dialog);
    virtual ~DialogManners();
    DialogManners(const DialogManners &) = delete;
    DialogManners &operator=(const DialogManners &) = delete;

    /// Where it comes up the next time. Without a place asked for it comes up over its parent or,
    /// without one, on the display of the active window.
    void seat(const DialogRequest &request);

    /// Another user has logged in, or nobody is any more: closes a dialog that was for one.
    virtual void onUserChanged() { m_dialog.close(); }

protected:
    /// To be called when it has been shown, and so knows its size.
    void settle();
    /// It has a place of its own already, from an earlier run.
    void keepPlace() { m_isSettled = true; }
    /// Enter presses the button that has the focus, also where that is not the default one. True
    /// when it did.
    bool takesKey(const QKeyEvent &event) const;

private:
    QWidget &m_dialog;
    QPointer<const QWidget> m_element;
    std::optional<int> m_display;
    bool m_isSettled = false;
};

} // namespace Widgets
