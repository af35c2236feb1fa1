#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/dialogs/DialogManners.h"
#include "widgets/windows/frames/FrameWindow.h"

namespace Nodes {
class BasicNode;
}

class AuthenticationDialog;

/// The log-in dialog in the library's own decoration. Its close button rejects the dialog and
/// hides the window, which is not deleted with it: the caller, or its parent, does that.
class WIDGETS_EXPORT AuthenticationWindow : public Widgets::FrameWindow,
                                            public Widgets::DialogManners
{
    Q_OBJECT

public:
    static constexpr const char *Key = "login";

    explicit AuthenticationWindow(QWidget *parent = nullptr);
    ~AuthenticationWindow() override;

    /// As for the dialog; exec() then gives the dialog's result.
    void setNode(Nodes::BasicNode *node);
    AuthenticationDialog *dialog() const { return m_dialog; }

protected:
    void showEvent(QShowEvent *event) override;

private:
    AuthenticationDialog *m_dialog;
};
