#pragma once

#include "nodes/values/Result.h"

#include <string>

namespace Records {

/// What the program says beside its answer: on stderr, a line each, its name before it.
namespace Message {

void tell(const std::string &text);
/// True on success; else the detail was told.
bool check(const Nodes::Result &result);
/// What was done so far, written over itself; only when somebody sits there. "" ends it.
void progress(const std::string &text);

} // namespace Message

} // namespace Records
