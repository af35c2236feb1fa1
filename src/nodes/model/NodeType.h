#pragma once

#include "nodes/NodesExport.h"

#include <string>
#include <string_view>

namespace Nodes {

/// Type of a node: a family and, when known, the concrete kind. The subtype code is the family
/// shifted left by 12 bits plus a running index, so the family follows from the code.
class NODES_EXPORT NodeType
{
public:
    enum enNodeType : unsigned {
        TypeNone = 0,
        TypeSystem = 1,
        TypeFolder = 2,
        TypeDriver = 3,
        TypeDriverGroup = 4,
        TypeSignal = 5,
        TypeSecurity = 32,
        TypeSubsystem = 7,
        TypeAlarm = 8,
        TypeState = 9,
        TypeTimer = 10,
        TypeMenu = 11,
        TypeChartItem = 12,
        TypeReportItem = 13,
        TypeArgument = 15,
        TypeAction = 16,
        TypeFrame = 17,
        TypeWindow = 18,
        TypeComposition = 19,
        TypeLayer = 20,
        TypeWidget = 21,
        TypeChartAxis = 24,
        TypeArchive = 26,
        TypeArchiverAction = 0x106
    };
    /// Full subtype codes of kinds that code below their classes' layer has to know. Every other
    /// kind's is `Code` of its class, as theirs is too.
    enum enNodeSubtype : unsigned {
        SubtypeNone = 0,
        SubtypeProject = 0x1001,
        SubtypeStation = 0x1002,
        SubtypeUnknown = 0x1FFF, ///< element of a kind this program does not know, kept verbatim
        SubtypeFolder = 0x2001,
        SubtypeTemplateParameter = 0x5011,
        SubtypeAlarmColumn = 0x9012,
        SubtypeOperationTimer = 0xA00A,
        SubtypeReport = 0xD001,
        SubtypeReportSchedule = 0xD007,
        SubtypeWindow = 0x12001,
        SubtypeWindowComposed = 0x12003,
        SubtypeWindowTemplate = 0x12004,
        SubtypeComposition = 0x13001,
        SubtypeCompositionTemplate = 0x13002,
        SubtypeLayer = 0x14001,
        SubtypeChartHistory = 0x15004,
        SubtypeChartXY = 0x1500D,
        SubtypeChartCorridor = 0x15010
    };

    constexpr NodeType() = default;
    constexpr NodeType(enNodeType family) : m_family(family) {}
    constexpr NodeType(enNodeType family, enNodeSubtype subtype)
        : m_family(family), m_subtype(subtype)
    {
    }
    /// From a full subtype code; the family follows from it.
    constexpr explicit NodeType(enNodeSubtype subtype)
        : m_family(static_cast<enNodeType>(subtype >> 12)), m_subtype(subtype)
    {
    }
    /// From the text form: a registered kind's key ("label") or a hexadecimal code ("0x15001").
    /// Any other text gives the empty type.
    explicit NodeType(std::string_view typeName);

    constexpr enNodeType GetFamily() const { return m_family; }
    constexpr enNodeSubtype GetSubtype() const { return m_subtype; }
    /// The subtype code, or the family shifted left when no subtype is known.
    constexpr unsigned GetCode() const
    {
        return m_subtype != SubtypeNone ? unsigned(m_subtype) : unsigned(m_family) << 12;
    }
    constexpr bool isEmpty() const { return m_family == TypeNone && m_subtype == SubtypeNone; }

    /// Text form that the constructor reads back.
    std::string ToString() const;
    /// Russian name of the family, UTF-8.
    std::string GetTypeNameTranslated() const;
    /// Russian name of the kind, UTF-8; the family's name when no subtype is known.
    std::string GetSubtypeNameTranslated() const;

    constexpr bool operator==(const NodeType &o) const
    {
        return m_family == o.m_family && m_subtype == o.m_subtype;
    }
    constexpr bool operator!=(const NodeType &o) const { return !(*this == o); }

private:
    enNodeType m_family = TypeNone;
    enNodeSubtype m_subtype = SubtypeNone;
};

} // namespace Nodes
