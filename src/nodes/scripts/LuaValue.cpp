#include "nodes/scripts/LuaValue.h"

#include <lua.hpp>

#include <limits>

namespace Nodes {

namespace {

SignalValue readNumber(lua_State *lua, int index)
{
    const lua_Number number = lua_tonumber(lua, index);
    const bool isInt = lua_isinteger(lua, index) && number >= std::numeric_limits<int>::min() &&
                       number <= std::numeric_limits<int>::max();
    return isInt ? SignalValue(int(number)) : SignalValue(double(number));
}

} // namespace

void PushLuaValue(lua_State *lua, const SignalValue &value)
{
    switch (value.GetType()) {
    case enSignalValueType::String: {
        const std::string text = value.ToString();
        lua_pushlstring(lua, text.data(), text.size());
        break;
    }
    case enSignalValueType::Bool:
        lua_pushboolean(lua, value.ToBool());
        break;
    case enSignalValueType::Int:
        lua_pushinteger(lua, value.ToInt());
        break;
    case enSignalValueType::Double:
    case enSignalValueType::ULong:
        lua_pushnumber(lua, value.ToDouble());
        break;
    default:
        lua_pushnil(lua);
    }
}

SignalValue ReadLuaValue(lua_State *lua, int index)
{
    switch (lua_type(lua, index)) {
    case LUA_TNIL:
        return SignalValue();
    case LUA_TBOOLEAN:
        return lua_toboolean(lua, index) != 0;
    case LUA_TNUMBER:
        return readNumber(lua, index);
    case LUA_TSTRING: {
        std::size_t size = 0;
        const char *text = lua_tolstring(lua, index, &size);
        return std::string(text, size);
    }
    default:
        return Result(Result::WrongType,
                      std::string("a ") + luaL_typename(lua, index) + " is no value of a signal");
    }
}

} // namespace Nodes
