#pragma once

#include "nodes/NodesExport.h"

#include <memory>
#include <string>
#include <utility>

namespace Nodes {

/// Outcome of an operation of the node model: a type, a numeric error code, the node concerned
/// and an optional detail ("what, where"). A value; copies share the detail text. Any thread.
class NODES_EXPORT Result
{
public:
    enum ResultType {
        Success = 1, ///< for archive and journal requests: accepted, the answer follows
        Failed = 2,
        NotFound = 3,
        InvalidArgument = 4,
        WrongType = 5,
        OutOfRange = 6,
        AccessDenied = 7, ///< code 1320, shown to the operator
        Refused = 8,      ///< code 403, refused without a message
        NotConnected = 9,
        Timeout = 10,
        DeviceError = 11,
        ParseError = 12,
        StorageError = 13,
        NotAvailable = 14,
        Cancelled = 15,
        Duplicate = 16,
        LimitExceeded = 17,
        Cycle = 18,
        AuthenticationFailed = 19,
        ReadOnly = 20
    };

    Result() = default;
    Result(ResultType type);
    Result(ResultType type, std::string detail);
    /// About a node, or whatever else tells its id with GetId; null: about none in particular.
    /// `extraCode` replaces the type's own error code unless it is 0.
    template <class Node>
    Result(const Node *node, ResultType type, int extraCode = 0)
        : m_type(type), m_extraCode(extraCode), m_nodeId(node ? node->GetId() : 0)
    {
    }
    template <class Node>
    Result(const Node *node, ResultType type, std::string detail) : Result(type, std::move(detail))
    {
        m_nodeId = node ? node->GetId() : 0;
    }

    ResultType GetType() const { return m_type; }
    /// Error code: 0 for success, 1320 for missing rights, 403 for a silent refusal.
    int GetCode() const;
    unsigned long GetNodeId() const { return m_nodeId; }
    const std::string &GetDetail() const;
    bool IsSuccess() const { return m_type == Success; }
    explicit operator bool() const { return IsSuccess(); }

    /// English text for logs: type, code, node id and detail.
    std::string ToString() const;
    /// Russian text for the operator.
    std::string GetResultTranslated() const;

    bool operator==(ResultType type) const { return m_type == type; }
    bool operator!=(ResultType type) const { return m_type != type; }
    /// Equal when type, code and node agree; details are texts and do not count.
    bool operator==(const Result &other) const;
    bool operator!=(const Result &other) const { return !(*this == other); }

private:
    ResultType m_type = Success;
    int m_extraCode = 0;
    unsigned long m_nodeId = 0;
    std::shared_ptr<const std::string> m_detail;
};

} // namespace Nodes
