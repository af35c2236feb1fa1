#pragma once

struct lua_State;

namespace Nodes {

/// Pushes a table with what untrusted scripts may call, made from Lua's own libraries, and closes
/// the ways around it (string methods, meta tables). Runs unprotected: only on a fresh state.
void PushLuaWhitelist(lua_State *lua);

} // namespace Nodes
