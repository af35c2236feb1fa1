#include "nodes/auth/systemAuthentication.h"

#include "nodes/auth/AccessRules.h"
#include "nodes/auth/LoginGuard.h"
#include "nodes/auth/PasswordHash.h"
#include "nodes/auth/securityUser.h"
#include "nodes/events/BasicEvent.h"
#include "nodes/model/ConfigNodeJournal.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/services/JournalSink.h"
#include "nodes/values/Clock.h"
#include "nodes/values/SlotList.h"

#include <atomic>
#include <thread>

namespace Nodes {

namespace {

// Error codes of a refused log-in, beside those of the result types.
constexpr int codeNoSuchUser = 1317;
constexpr int codeWrongPassword = 1318;

std::string becauseOf(const std::string &reason)
{
    return reason.empty() ? reason : " — " + reason;
}

} // namespace

using Rules = std::shared_ptr<const AccessRules>;

struct systemAuthentication::State
{
    explicit State(systemAuthentication &owner) : self(owner) {}

    /// Rules of now on the GUI thread, those of its last visit elsewhere; null without a project.
    Rules Current()
    {
        Rules rules = std::atomic_load(&published);
        const NodesCollection *project = self.GetNodesCollection();
        if (!project || !IsGuiThread())
            return rules;
        if (rules && !isDirty && rules->GetTree()->revision == project->GetRevision())
            return FollowInstances(*project, rules);
        rules = Rebuild(*project, rules ? rules->GetTree() : nullptr);
        if (!user.isEmpty() && rules->GetUser().isEmpty()) {
            self.leave("пользователь отключён или удалён");
            rules = std::atomic_load(&published);
        }
        return rules;
    }

    /// Current rules of who acts here, or of the current user when nobody does. Null also for
    /// another user's off the GUI thread.
    Rules Acting()
    {
        const Rules rules = Current();
        const ActingUser *acting = ActingScope::Of(self);
        if (!acting || !rules || acting->user == rules->GetUser())
            return rules;
        if (!IsGuiThread())
            return nullptr;
        if (actingBase != rules || !actingRules || actingUser != acting->user) {
            actingBase = rules;
            actingUser = acting->user;
            actingRules = std::make_shared<const AccessRules>(
                rules->GetTree(), rules->GetInstances(), actingUser, self.m_guestRole);
        }
        return actingRules;
    }

    // At once, not only when somebody asks for a right: the screens have to follow.
    void Refresh()
    {
        isDirty = true;
        (void)Current();
    }

    // The thread that starts, logs in or asks first owns the tree.
    bool IsGuiThread()
    {
        std::thread::id nobody;
        const std::thread::id own = std::this_thread::get_id();
        return guiThread.compare_exchange_strong(nobody, own) || nobody == own;
    }

    Rules Rebuild(const NodesCollection &project, std::shared_ptr<const AccessRules::Tree> tree)
    {
        isDirty = false;
        if (!tree || tree->revision != project.GetRevision())
            tree = AccessRules::Survey(project);
        Watch(*tree);
        const auto rules = std::make_shared<const AccessRules>(
            tree, AccessRules::SurveyInstances(project), user, self.m_guestRole);
        std::atomic_store(&published, Rules(rules));
        return rules;
    }

    /// A faceplate that opens or closes changes neither the users nor the tree.
    Rules FollowInstances(const NodesCollection &project, const Rules &rules)
    {
        if (rules->GetInstances()->revision == project.GetInstanceRevision())
            return rules;
        const Rules followed = rules->With(AccessRules::SurveyInstances(project));
        std::atomic_store(&published, followed);
        return followed;
    }

    void Watch(const AccessRules::Tree &tree)
    {
        connections.clear();
        for (const NodeLink &link : tree.securityNodes) {
            if (ConfigNode *node = link.GetNode())
                connections.emplace_back(
                    node->ConnectPropertyChanged([this](BasicProperty *) { Refresh(); }));
        }
        // The user may go with any node above.
        for (ConfigNode *node = user.GetNode(); node; node = node->GetParent())
            connections.emplace_back(node->ConnectChildRemoved([this](NodeLink) { Refresh(); }));
    }

    systemAuthentication &self;
    std::atomic<std::thread::id> guiThread{};
    std::atomic<bool> isDirty{false};
    Rules published; // swapped atomically
    NodeLink user;   // GUI thread, as the next
    std::string userName;
    Rules actingBase; // what the next was made from; GUI thread, as the next two
    Rules actingRules;
    NodeLink actingUser;
    LoginGuard guard;
    SlotList<NodeLink> userChanged;
    std::vector<ScopedConnection> connections;
};

/// One try to log in: the user asked for, as far as there is such a node.
struct systemAuthentication::Attempt
{
    explicit Attempt(const NodeLink &link)
        : user(link),
          node(dynamic_cast<const securityUser *>(link.GetNode())),
          name(node ? node->GetName() : "id " + std::to_string(link.GetNodeId()))
    {
    }
    bool IsKnown() const { return node && node->isEnabled(); }
    bool IsPasswordless() const { return IsKnown() && node->isPasswordless(); }
    /// A user who is not enabled gets the answer of a wrong password.
    Result Refusal() const
    {
        return Result(node, Result::AuthenticationFailed,
                      node ? codeWrongPassword : codeNoSuchUser);
    }

    NodeLink user;
    const securityUser *node;
    std::string name;
};

systemAuthentication::systemAuthentication() : m_state(std::make_unique<State>(*this)) {}
systemAuthentication::~systemAuthentication() = default;

KindInfo systemAuthentication::Kind()
{
    return KindBuilder::For<systemAuthentication>("authentication", "Users", "Пользователи")
        .Property<&systemAuthentication::m_accessDeniedAction>(
            Prop::AccessDenied, "When access is denied", "При отказе в доступе")
        .Choice(AccessDeniedRefuse, "refuse", "Отказать при попытке")
        .Choice(AccessDeniedDisable, "disable", "Сделать недоступным")
        .Choice(AccessDeniedHide, "hide", "Скрыть")
        .Property<&systemAuthentication::m_guestRole>(Prop::GuestRole, "Role of guests",
                                                      "Роль без входа")
        .Refers({NodeType::TypeSecurity})
        .Property<&systemAuthentication::m_logoutAfter>(Prop::LogoutAfter, "Log out after, s",
                                                        "Выход без действий через, с")
        .Range(0, 86400)
        .Children({NodeType::TypeSecurity, NodeType::TypeFolder});
}

Result systemAuthentication::Start()
{
    m_state->guiThread = std::this_thread::get_id();
    m_state->isDirty = true;
    (void)m_state->Current();
    return ConfigNode::Start();
}

void systemAuthentication::OnPropertyChanged(const PropertyDescriptor &)
{
    m_state->isDirty = true;
}

Result systemAuthentication::Authenticate(const NodeLink &user)
{
    const Attempt attempt(user);
    if (!attempt.IsPasswordless())
        return refuse(attempt, "вход без пароля не разрешён", attempt.Refusal());
    return enter(attempt);
}

Result systemAuthentication::Authenticate(const NodeLink &user, const std::string &password)
{
    const Attempt attempt(user);
    if (attempt.IsPasswordless() && password.empty())
        return enter(attempt);
    if (const int pause = GetPause(user)) {
        const std::string seconds = std::to_string(pause);
        return refuse(attempt, "слишком много попыток, ждать " + seconds + " с",
                      Result(Result::LimitExceeded, "too many attempts, wait " + seconds + " s"));
    }
    const std::string hash = attempt.IsKnown() ? attempt.node->GetPasswordHash() : std::string();
    if (!MatchesPasswordHash(hash, password)) {
        m_state->guard.NoteFailure(user.GetNodeId(), Clock::Current().Steady());
        return refuse(attempt, "неверное имя или пароль", attempt.Refusal());
    }
    m_state->guard.NoteSuccess(user.GetNodeId());
    return enter(attempt);
}

int systemAuthentication::GetPause(const NodeLink &user) const
{
    constexpr Timestamp second = 1000000;
    const Timestamp pause = m_state->guard.Pause(user.GetNodeId(), Clock::Current().Steady());
    return int((pause + second - 1) / second);
}

Result systemAuthentication::enter(const Attempt &attempt)
{
    changeUser(attempt.user);
    journal(attempt, "Вход: " + attempt.name, attempt.name);
    m_state->userChanged(attempt.user);
    return Result();
}

Result systemAuthentication::refuse(const Attempt &attempt, const std::string &why, Result answer)
{
    journal(attempt, "Отказ во входе: " + attempt.name + becauseOf(why), GetCurrentUserName());
    return answer;
}

void systemAuthentication::Logout(const std::string &reason)
{
    (void)m_state->Current(); // may find that the user is gone already
    if (!m_state->user.isEmpty())
        leave(reason);
}

void systemAuthentication::leave(const std::string &reason)
{
    const Attempt leaving(m_state->user);
    const std::string name = m_state->userName; // the node may be gone
    changeUser(NodeLink());
    journal(leaving, "Выход: " + name + becauseOf(reason), name);
    m_state->userChanged(NodeLink());
}

void systemAuthentication::changeUser(const NodeLink &user)
{
    m_state->guiThread = std::this_thread::get_id();
    m_state->user = user;
    m_state->userName = user.isEmpty() ? std::string() : user->GetName();
    m_state->isDirty = true;
    (void)m_state->Current();
}

void systemAuthentication::journal(const Attempt &attempt, const std::string &text,
                                   const std::string &user) const
{
    JournalSink *sink = GetServices().journal;
    if (!sink)
        return;
    BasicEvent event = EventAt(GetNodeLink(), LevelSecurity, text, TypeSecurityEvent);
    event.sourceNode = attempt.node ? attempt.user : NodeLink();
    event.user = user;
    (void)sink->Append(std::move(event));
}

NodeLink systemAuthentication::GetCurrentUser() const
{
    const Rules rules = m_state->Current();
    return rules ? rules->GetUser() : NodeLink();
}

ActingUser systemAuthentication::GetActingUser() const
{
    if (const ActingUser *acting = ActingScope::Of(*this))
        return *acting;
    const Rules rules = m_state->Current();
    return rules ? ActingUser{GetId(), rules->GetUser(), rules->GetUserName()} : ActingUser();
}

std::string systemAuthentication::GetCurrentUserName() const
{
    if (const ActingUser *acting = ActingScope::Of(*this))
        return acting->name;
    const Rules rules = m_state->Current();
    return rules ? rules->GetUserName() : std::string();
}

enNodePrivMode systemAuthentication::CheckAccess(AuthPriv privilege, const NodeLink &node) const
{
    const Rules rules = m_state->Acting();
    if (rules)
        return rules->Decide(privilege.GetType(), node.GetNodeId());
    if (ActingScope::Of(*this))
        return PrivModeDenied;
    // Not part of a project: there are no users either. Else nobody has asked on the GUI thread.
    return GetNodesCollection() ? PrivModeNoRule : PrivModeUnchecked;
}

enAccessDeniedAction systemAuthentication::GetAccessDeniedAction() const
{
    return enAccessDeniedAction(m_accessDeniedAction);
}

std::string systemAuthentication::HashPassword(const std::string &password)
{
    return MakePasswordHash(password);
}

Connection systemAuthentication::ConnectUserChanged(std::function<void(NodeLink)> slot)
{
    return m_state->userChanged.Connect(std::move(slot));
}

} // namespace Nodes
