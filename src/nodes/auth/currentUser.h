#pragma once

#include "nodes/model/properties/PropertyId.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/values/Connection.h"

namespace Nodes {

/// Name of the user who is logged in at this station, or whether there is one, for labels and for
/// archiving who was there.
/// Bad while the project has no user subsystem or the station does not run. Read only.
class NODES_EXPORT currentUser : public BasicSignal
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x5009);
    struct Prop : BasicSignal::Prop
    {
        static constexpr PropertyId<int> Show{5901, "show"};
        static constexpr PropertyId<std::string> Nobody{5902, "nobody"};
    };

    currentUser() { SetValueType(enSignalValueType::String); }
    static KindInfo Kind();
    SignalOrigin GetOrigin() const override { return SignalOrigin::Process; }
    Result Start() override;
    Result Stop() override;
    void Validate(ValidationResults &results) const override;

protected:
    Result DoWrite(const SignalValue &value) override;

private:
    enum Form { FormLogin = 0, FormFullName = 1, FormPresence = 2 };

    void publish(const NodeLink &user) const;

    int m_form = FormLogin;
    std::string m_nobody = "Вход не выполнен";
    ScopedConnection m_connection;
};

} // namespace Nodes
