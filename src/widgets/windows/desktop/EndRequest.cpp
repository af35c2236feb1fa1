#include "widgets/windows/desktop/EndRequest.h"

#include "widgets/dialogs/PlainMessageBox.h"
#include "widgets/windows/Access.h"

#include "nodes/auth/AccessCheck.h"
#include "nodes/events/EventLevel.h"
#include "nodes/model/ConfigNode.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QTimer>

namespace Widgets {

namespace {

bool isConfirmed()
{
    PlainMessageBox box(QMessageBox::Question, QStringLiteral("Завершение работы"),
                        QStringLiteral("Завершить работу станции? Все её окна закроются."),
                        QMessageBox::Ok | QMessageBox::Cancel);
    box.button(QMessageBox::Ok)->setText(QStringLiteral("Завершить"));
    box.button(QMessageBox::Cancel)->setText(QStringLiteral("Отмена"));
    box.setDefaultButton(QMessageBox::Cancel);
    return box.exec() == QMessageBox::Ok;
}

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

void decide(const Nodes::NodeLink &link)
{
    if (!mayEnd(link) || !isConfirmed() || !mayEnd(link))
        return;
    const auto &frame = *static_cast<const Nodes::ConfigNode *>(link.GetNode());
    const std::string user = Nodes::UserNameFor(frame);
    (void)frame.StoreMessage(Nodes::LevelWarning,
                             "Станция завершена оператором" + (user.empty() ? "" : ": " + user),
                             frame.GetPath());
    QCoreApplication::quit();
}

} // namespace

void EndRequest::ask(Nodes::ConfigNode &frame)
{
    QTimer::singleShot(0, QCoreApplication::instance(),
                       [link = frame.GetNodeLink()] { decide(link); });
}

} // namespace Widgets
