#include "widgets/dialogs/Dialogs.h"

#include "widgets/dialogs/DialogManners.h"
#include "widgets/windows/DesktopContext.h"
#include "widgets/windows/desktop/DesktopPlacement.h"

#include "nodes/auth/systemAuthentication.h"
#include "nodes/system/systemCore.h"

#include <map>
#include <string>

namespace Widgets {

namespace {

struct Entry
{
    DialogKind kind;
    QPointer<QWidget> up; // of a single one
};

using Table = std::map<std::string, Entry>;

Table &table()
{
    static Table entries;
    return entries;
}

/// Tells the dialog that it belongs to when the user changes.
class UserWatch : public QObject
{
public:
    UserWatch(QWidget &dialog, DialogManners &manners, Nodes::systemAuthentication &users)
        : QObject(&dialog),
          m_connection(users.ConnectUserChanged([&dialog, &manners](const Nodes::NodeLink &) {
              QMetaObject::invokeMethod(
                  &dialog, [&manners] { manners.onUserChanged(); }, Qt::QueuedConnection);
          }))
    {
    }

private:
    Nodes::ScopedConnection m_connection;
};

} // namespace

bool Dialogs::install(std::initializer_list<DialogKind> kinds)
{
    for (const DialogKind &kind : kinds) {
        if (!table().emplace(kind.key, Entry{kind, {}}).second)
            qFatal("two kinds of dialogs are called \"%s\"", kind.key);
    }
    return true;
}

QWidget *Dialogs::make(const char *key, const DialogRequest &request)
{
    const auto found = table().find(key);
    if (found == table().end())
        qFatal("no kind of dialogs is called \"%s\"", key);
    Entry &entry = found->second;
    if (entry.up)
        DesktopPlacement::present(*entry.up);
    if (entry.up || (entry.kind.isSingle && DesktopContext::isStationEnding()))
        return nullptr;
    QWidget *dialog = entry.kind.make(request);
    auto *manners = dynamic_cast<DialogManners *>(dialog);
    if (manners)
        manners->seat(request);
    if (entry.kind.isSingle)
        entry.up = dialog;
    const Nodes::systemCore *core = request.node ? request.node->GetCore() : nullptr;
    auto *users = core ? core->GetSystemAuthentication() : nullptr;
    if (entry.kind.endsWithUser && manners && users)
        new UserWatch(*dialog, *manners, *users);
    return dialog;
}

} // namespace Widgets
