#include "nodes/scripts/LuaSandbox.h"

#include "nodes/scripts/LuaMemory.h"
#include "nodes/scripts/LuaValue.h"
#include "nodes/scripts/LuaWhitelist.h"

#include <lua.hpp>

#include <cstdint>
#include <deque>
#include <exception>
#include <new>

#include <time.h>

// Lua leaves a failing function by a long jump, which skips destructors. So no code below holds an
// object with a destructor while it calls something that may fail inside Lua: scripts run through
// lua_pcall, and the host's own calls run with the memory limit lifted.

namespace Nodes {

namespace {

/// Processor time of this thread in nanoseconds: a busy machine must not stop an innocent script.
std::int64_t spentTime()
{
    timespec spent{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &spent);
    return std::int64_t(spent.tv_sec) * 1000000000 + spent.tv_nsec;
}

constexpr int hookInterval = 100; // instructions; bounds how late a stop can come

} // namespace

struct LuaSandbox::Impl
{
    explicit Impl(LuaLimits given) : limits(given), memory(given.memory)
    {
        lua = lua_newstate(&LuaMemory::Allocate, &memory);
        if (!lua)
            throw std::bad_alloc();
        *static_cast<Impl **>(lua_getextraspace(lua)) = this;
        PushLuaWhitelist(lua);
        shared = luaL_ref(lua, LUA_REGISTRYINDEX);
    }
    ~Impl() { lua_close(lua); }

    static Impl &of(lua_State *lua) { return **static_cast<Impl **>(lua_getextraspace(lua)); }

    /// Reference to a fresh table of globals that falls back to what all scripts share.
    int newGlobals();
    /// Leaves the compiled function, or the error text, at the top.
    bool load(const std::string &name, const std::string &text);
    bool compileEither(const std::string &name, const std::string &text);
    /// Takes the outcome of one of the two from the top.
    Result keep(bool isCompiled, Script &script);
    /// Calls the function at the top within the limits; the result or error is left at the top.
    int callLimited();
    Result failure(int status);

    static void countHook(lua_State *lua, lua_Debug *);
    static int callHost(lua_State *lua);
    static bool pushHostResult(lua_State *lua, const Function &function);

    struct Compiled
    {
        int function;
        int globals;
    };

    LuaLimits limits;
    LuaMemory memory;
    lua_State *lua = nullptr;
    int shared = LUA_NOREF;
    std::deque<Function> functions; // stable addresses: closures refer to them
    std::vector<Compiled> scripts;
    long instructionsLeft = 0;
    std::int64_t deadline = 0;      ///< in processor time
    const char *exceeded = nullptr; ///< which limit stopped the run
};

void LuaSandbox::Impl::countHook(lua_State *lua, lua_Debug *)
{
    Impl &self = of(lua);
    self.instructionsLeft -= hookInterval;
    if (self.instructionsLeft <= 0)
        self.exceeded = "too many instructions: endless loop?";
    else if (spentTime() > self.deadline)
        self.exceeded = "takes too long";
    if (self.exceeded)
        luaL_error(lua, "%s", self.exceeded);
}

bool LuaSandbox::Impl::pushHostResult(lua_State *lua, const Function &function)
{
    SignalValue result;
    try {
        Arguments arguments;
        for (int i = 1; i <= lua_gettop(lua); ++i)
            arguments.push_back(ReadLuaValue(lua, i));
        result = function(arguments);
    } catch (const std::exception &error) {
        result = Result(Result::Failed, error.what());
    }
    if (!result.IsError()) {
        PushLuaValue(lua, result);
        return true;
    }
    luaL_where(lua, 1);
    lua_pushstring(lua, result.GetError().GetDetail().c_str());
    lua_concat(lua, 2);
    return false;
}

int LuaSandbox::Impl::callHost(lua_State *lua)
{
    luaL_checkstack(lua, 4, nullptr);
    LuaMemory &memory = of(lua).memory;
    memory.SetEnforced(false);
    const auto *function = static_cast<const Function *>(lua_touserdata(lua, lua_upvalueindex(1)));
    const bool isDone = pushHostResult(lua, *function);
    memory.SetEnforced(true);
    return isDone ? 1 : lua_error(lua);
}

int LuaSandbox::Impl::newGlobals()
{
    lua_newtable(lua);
    lua_newtable(lua);
    lua_rawgeti(lua, LUA_REGISTRYINDEX, shared);
    lua_setfield(lua, -2, "__index");
    lua_setmetatable(lua, -2);
    return luaL_ref(lua, LUA_REGISTRYINDEX);
}

bool LuaSandbox::Impl::load(const std::string &name, const std::string &text)
{
    const std::string chunk = "=" + name;
    // "t": compiled bytes can break the interpreter and are never accepted.
    return luaL_loadbufferx(lua, text.data(), text.size(), chunk.c_str(), "t") == LUA_OK;
}

bool LuaSandbox::Impl::compileEither(const std::string &name, const std::string &text)
{
    if (load(name, "return " + text))
        return true;
    if (load(name, text)) {
        lua_remove(lua, -2);
        return true;
    }
    // Both messages are there; the one that fits what the author meant stays.
    if (text.find("return") == std::string::npos)
        lua_pop(lua, 1);
    else
        lua_remove(lua, -2);
    return false;
}

int LuaSandbox::Impl::callLimited()
{
    instructionsLeft = limits.instructions;
    deadline = spentTime() + std::int64_t(limits.milliseconds) * 1000000;
    exceeded = nullptr;
    lua_sethook(lua, &countHook, LUA_MASKCOUNT, hookInterval);
    memory.SetEnforced(true);
    const int status = lua_pcall(lua, 0, 1, 0);
    memory.SetEnforced(false);
    lua_sethook(lua, nullptr, 0, 0);
    return status;
}

Result LuaSandbox::Impl::failure(int status)
{
    const char *message = lua_tostring(lua, -1);
    const std::string text = message ? message : "error without a text";
    if (status == LUA_ERRMEM)
        return Result(Result::LimitExceeded, "uses too much memory");
    return Result(exceeded ? Result::LimitExceeded : Result::Failed, text);
}

LuaSandbox::LuaSandbox(LuaLimits limits) : m_impl(std::make_unique<Impl>(limits)) {}
LuaSandbox::~LuaSandbox() = default;

void LuaSandbox::AddFunction(const std::string &name, Function function)
{
    lua_State *lua = m_impl->lua;
    Function &kept = m_impl->functions.emplace_back(std::move(function));
    lua_rawgeti(lua, LUA_REGISTRYINDEX, m_impl->shared);
    lua_pushlightuserdata(lua, &kept);
    lua_pushcclosure(lua, &Impl::callHost, 1);
    lua_setfield(lua, -2, name.c_str());
    lua_pop(lua, 1);
}

Result LuaSandbox::Impl::keep(bool isCompiled, Script &script)
{
    if (!isCompiled) {
        const Result error(Result::ParseError, lua_tostring(lua, -1));
        lua_pop(lua, 1);
        return error;
    }
    Compiled compiled{LUA_NOREF, newGlobals()};
    lua_rawgeti(lua, LUA_REGISTRYINDEX, compiled.globals);
    lua_setupvalue(lua, -2, 1); // the first upvalue of a chunk is its table of globals
    compiled.function = luaL_ref(lua, LUA_REGISTRYINDEX);
    script = scripts.size();
    scripts.push_back(compiled);
    return Result();
}

Result LuaSandbox::Compile(const std::string &name, const std::string &text, Script &script)
{
    return m_impl->keep(m_impl->compileEither(name, text), script);
}

Result LuaSandbox::CompileBlock(const std::string &name, const std::string &text, Script &script)
{
    return m_impl->keep(m_impl->load(name, text), script);
}

void LuaSandbox::SetVariable(Script script, const char *name, const SignalValue &value)
{
    lua_State *lua = m_impl->lua;
    lua_rawgeti(lua, LUA_REGISTRYINDEX, m_impl->scripts.at(script).globals);
    PushLuaValue(lua, value);
    lua_setfield(lua, -2, name);
    lua_pop(lua, 1);
}

Result LuaSandbox::Run(Script script, SignalValue &value)
{
    lua_State *lua = m_impl->lua;
    lua_rawgeti(lua, LUA_REGISTRYINDEX, m_impl->scripts.at(script).function);
    const int status = m_impl->callLimited();
    Result result = status == LUA_OK ? Result() : m_impl->failure(status);
    if (result) {
        SignalValue returned = ReadLuaValue(lua, -1);
        if (returned.IsError())
            result = returned.GetError();
        else
            value = std::move(returned);
    }
    lua_pop(lua, 1);
    return result;
}

} // namespace Nodes
