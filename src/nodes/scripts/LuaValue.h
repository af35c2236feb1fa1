#pragma once

#include "nodes/values/SignalValue.h"

struct lua_State;

namespace Nodes {

/// Values between Lua and the node model. The caller sees to it that Lua cannot raise an error
/// meanwhile (see LuaMemory::SetEnforced).

/// Pushes one value; empty values and errors become nil.
void PushLuaValue(lua_State *lua, const SignalValue &value);
/// The value at `index`; WrongType for tables and functions.
SignalValue ReadLuaValue(lua_State *lua, int index);

} // namespace Nodes
