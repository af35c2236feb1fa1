#pragma once

namespace Nodes {

/// Words for kinds of findings about a project: scripts that run a check may rely on them, as the
/// texts may change. What has no word of its own is named after its Result.
namespace FindingCode {

// Of the text; found while it is read.
constexpr const char *Unreadable = "unreadable";
constexpr const char *NewerFormat = "newer-format";
constexpr const char *Doctype = "doctype";
constexpr const char *BadIdentity = "bad-identity";
constexpr const char *NoId = "no-id";
constexpr const char *RepeatedId = "repeated-id";
constexpr const char *RepeatedAttribute = "repeated-attribute";
constexpr const char *IdleText = "idle-text";

// Of the tree; found while it is read and whenever it is checked.
constexpr const char *UnknownKind = "unknown-kind";
constexpr const char *UnknownAttribute = "unknown-attribute";
constexpr const char *BadValue = "bad-value";
constexpr const char *BadText = "bad-text";
constexpr const char *Misplaced = "misplaced";
constexpr const char *NestedDriver = "nested-driver";
constexpr const char *NoTarget = "no-target";
constexpr const char *WrongTarget = "wrong-target";
constexpr const char *LinkCycle = "link-cycle";
constexpr const char *WholeProject = "whole-project";
constexpr const char *NoFile = "no-file";
constexpr const char *ForeignFile = "foreign-file";
constexpr const char *RepeatedName = "repeated-name";
constexpr const char *Advice = "advice";

// Of a project as a whole.
constexpr const char *RepeatedAddress = "repeated-address";
constexpr const char *RepeatedDevice = "repeated-device";
constexpr const char *UnreachableWindow = "unreachable-window";
constexpr const char *NothingShown = "nothing-shown";

} // namespace FindingCode

} // namespace Nodes
