#include "nodes/scripts/LuaWhitelist.h"

#include <lua.hpp>

#include <initializer_list>

namespace Nodes {

namespace {

using Names = std::initializer_list<const char *>;

// Left out on purpose: everything that loads code, reaches the outside or other scripts, catches
// errors (the stop of a script is one), or loops in C where no instruction is counted.
constexpr Names basics{"assert", "error",    "ipairs",   "next", "pairs",
                       "select", "tonumber", "tostring", "type"};
constexpr Names strings{"byte", "char", "format", "len", "lower", "reverse", "sub", "upper"};
constexpr Names tables{"concat", "insert", "pack", "remove", "unpack"};
constexpr Names mathematics{"abs", "acos",   "asin", "atan",       "ceil",      "cos",       "deg",
                            "exp", "floor",  "fmod", "log",        "max",       "min",       "modf",
                            "rad", "random", "sin",  "sqrt",       "tan",       "tointeger", "type",
                            "ult", "pi",     "huge", "maxinteger", "mininteger"};

void open(lua_State *lua, const char *name, lua_CFunction library)
{
    luaL_requiref(lua, name, library, 0);
}

/// Copies the named fields of the table at the top into the table below it.
void copyFields(lua_State *lua, Names names)
{
    for (const char *name : names) {
        lua_getfield(lua, -1, name);
        lua_setfield(lua, -3, name);
    }
}

int refuseWrite(lua_State *lua)
{
    return luaL_error(lua, "libraries are read only");
}

/// Wraps the table at the top so that scripts, which share it, can read it only.
void makeReadOnly(lua_State *lua)
{
    lua_newtable(lua);
    lua_newtable(lua);
    lua_pushvalue(lua, -3);
    lua_setfield(lua, -2, "__index");
    lua_pushcfunction(lua, &refuseWrite);
    lua_setfield(lua, -2, "__newindex");
    lua_setmetatable(lua, -2);
    lua_remove(lua, -2);
}

/// The named part of a library as a table of its own, at the top.
void pushPart(lua_State *lua, const char *name, lua_CFunction library, Names names)
{
    lua_newtable(lua);
    open(lua, name, library);
    copyFields(lua, names);
    lua_pop(lua, 1);
}

/// "text":upper() looks up here; Lua's own table would offer everything of the library.
void setStringMethods(lua_State *lua)
{
    lua_pushliteral(lua, "");
    lua_getmetatable(lua, -1);
    lua_pushvalue(lua, -3);
    lua_setfield(lua, -2, "__index");
    lua_pop(lua, 2);
}

/// Mathematics as `math.sin` and as `sin`; where a name is taken (`type`) only the former.
void addMathematics(lua_State *lua)
{
    pushPart(lua, LUA_MATHLIBNAME, &luaopen_math, mathematics);
    for (const char *name : mathematics) {
        lua_getfield(lua, -2, name);
        const bool isTaken = !lua_isnil(lua, -1);
        lua_pop(lua, 1);
        if (isTaken)
            continue;
        lua_getfield(lua, -1, name);
        lua_setfield(lua, -3, name);
    }
    makeReadOnly(lua);
    lua_setfield(lua, -2, LUA_MATHLIBNAME);
}

} // namespace

void PushLuaWhitelist(lua_State *lua)
{
    pushPart(lua, LUA_GNAME, &luaopen_base, basics);
    addMathematics(lua);
    pushPart(lua, LUA_STRLIBNAME, &luaopen_string, strings);
    makeReadOnly(lua);
    setStringMethods(lua);
    lua_setfield(lua, -2, LUA_STRLIBNAME);
    pushPart(lua, LUA_TABLIBNAME, &luaopen_table, tables);
    makeReadOnly(lua);
    lua_setfield(lua, -2, LUA_TABLIBNAME);
}

} // namespace Nodes
