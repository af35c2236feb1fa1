#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/dialogs/DialogRequest.h"

#include <QPointer>
#include <QWidget>

#include <initializer_list>

namespace Widgets {

/// A kind of dialog: one row of the table in DialogTable.cpp.
struct DialogKind
{
    const char *key; ///< the class's static Key
    QWidget *(*make)(const DialogRequest &request);
    bool isSingle = false; ///< one at a time: who asks again is shown the one that is up
    bool endsWithUser =
        false; ///< what it may do is a user's: closes when another one logs in or out
};

/// How dialogs are made, whatever needs them: by the keys of the table, so that neither elements
/// nor windows know what stands behind one. GUI thread.
class WIDGETS_EXPORT Dialogs
{
public:
    /// Adds rows; a key that is known already is fatal. The result is for a static initialiser.
    static bool install(std::initializer_list<DialogKind> kinds);

    /// A new dialog, not shown yet, which the caller deletes unless its parent has. A single one is
    /// null while another is up, which is brought forward, and once the station ends. An unknown
    /// key is fatal.
    static QWidget *make(const char *key, const DialogRequest &request);
    template <class Dialog> static Dialog *make(const DialogRequest &request = {})
    {
        return static_cast<Dialog *>(make(Dialog::Key, request));
    }
};

/// A dialog for the time of a scope. Its parent may go, and take it along, while it waits for the
/// operator: test it before each use then.
template <class Dialog> class OwnedDialog
{
public:
    explicit OwnedDialog(const DialogRequest &request = {})
        : m_dialog(Dialogs::make<Dialog>(request))
    {
    }
    ~OwnedDialog() { delete m_dialog; }
    OwnedDialog(const OwnedDialog &) = delete;
    OwnedDialog &operator=(const OwnedDialog &) = delete;

    explicit operator bool() const { return m_dialog; }
    Dialog *operator->() const { return m_dialog; }
    Dialog &operator*() const { return *m_dialog; }

private:
    QPointer<Dialog> m_dialog;
};

} // namespace Widgets
