#include "nodes/auth/currentUser.h"

#include "nodes/auth/securityUser.h"
#include "nodes/auth/systemAuthentication.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/system/systemCore.h"
#include "nodes/values/ValueCell.h"

namespace Nodes {

KindInfo currentUser::Kind()
{
    return KindBuilder::For<currentUser>("currentUser", "Current user", "Текущий пользователь")
        .Inherit<BasicSignal>()
        .Property<&currentUser::m_form>(Prop::Show, "Show", "Показывать")
        .Choice(FormLogin, "login", "Имя для входа")
        .Choice(FormFullName, "fullName", "Полное имя")
        .Choice(FormPresence, "present", "Есть ли вход: да, нет")
        .Property<&currentUser::m_nobody>(Prop::Nobody, "Text without a user",
                                          "Текст, когда никто не вошёл");
}

Result currentUser::Start()
{
    SetValueType(m_form == FormPresence ? enSignalValueType::Bool : enSignalValueType::String);
    systemAuthentication *users = GetCore() ? GetCore()->GetSystemAuthentication() : nullptr;
    if (!users) {
        const Result missing(this, Result::NotFound, "authentication");
        GetCell()->Publish(missing);
        return missing;
    }
    m_connection = users->ConnectUserChanged([this](const NodeLink &user) { publish(user); });
    publish(users->GetCurrentUser());
    return BasicSignal::Start();
}

Result currentUser::Stop()
{
    m_connection.Disconnect();
    GetCell()->Publish(Result(this, Result::NotAvailable));
    return BasicSignal::Stop();
}

void currentUser::publish(const NodeLink &user) const
{
    const auto *node = dynamic_cast<const securityUser *>(user.GetNode());
    if (m_form == FormPresence)
        GetCell()->Publish(node != nullptr);
    else if (!node)
        GetCell()->Publish(m_nobody);
    else if (m_form == FormFullName && !node->GetFullName().empty())
        GetCell()->Publish(node->GetFullName());
    else
        GetCell()->Publish(node->GetName());
}

void currentUser::Validate(ValidationResults &results) const
{
    BasicSignal::Validate(results);
    if (GetCore() && !GetCore()->GetSystemAuthentication())
        results.Add(GetNodeLink(), Result(this, Result::NotFound, "authentication"),
                    GetName() + ": в проекте нет пользователей, добавьте узел «Пользователи»");
}

Result currentUser::DoWrite(const SignalValue &)
{
    return Result(this, Result::ReadOnly, GetName());
}

} // namespace Nodes
