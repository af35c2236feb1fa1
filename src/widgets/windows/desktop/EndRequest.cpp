#include "widgets/windows/desktop/EndRequest.h"

#include "widgets/actions/running/Refusals.h"
#include "widgets/dialogs/Dialogs.h"
#include "widgets/dialogs/PlainMessageBox.h"

#include "nodes/events/EventLevel.h"
#include "nodes/model/ConfigNode.h"
#include "nodes/model/services/AccessCheck.h"

#include <QCoreApplication>
#include <QTimer>

namespace Widgets {

namespace {

// The node may be gone by the answer, and somebody else logged in.
bool mayEnd(const Nodes::NodeLink &link)
{
    const auto *frame = static_cast<const Nodes::ConfigNode *>(link.GetNode());
    if (!frame)
        return false;
    if (Nodes::DemandAccess(Nodes::PrivilegeConfigure, *frame, "завершение станции"))
        return true;
    ShowActionError(QStringLiteral("Недостаточно прав, чтобы завершить работу станции"));
    return false;
}

void end(const Nodes::NodeLink &link)
{
    if (!mayEnd(link))
        return;
    const auto &frame = *static_cast<const Nodes::ConfigNode *>(link.GetNode());
    const std::string user = Nodes::UserNameFor(frame);
    (void)frame.StoreMessage(Nodes::LevelWarning,
                             "Станция завершена оператором" + (user.empty() ? "" : ": " + user),
                             frame.GetNodeLink());
    QCoreApplication::quit();
}

void confirm(const Nodes::NodeLink &link)
{
    if (!mayEnd(link))
        return;
    auto *question = Dialogs::make<PlainMessageBox>();
    question->setQuestion(QStringLiteral("Завершение работы"),
                          QStringLiteral("Завершить работу станции? Все её окна закроются."),
                          QStringLiteral("Завершить"));
    question->askFor([link] { end(link); });
}

} // namespace

void EndRequest::ask(Nodes::ConfigNode &frame)
{
    QTimer::singleShot(0, QCoreApplication::instance(),
                       [link = frame.GetNodeLink()] { confirm(link); });
}

} // namespace Widgets
