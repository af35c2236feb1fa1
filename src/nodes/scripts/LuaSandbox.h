#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/SignalValue.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace Nodes {

/// What one script may use before it is stopped.
struct LuaLimits
{
    int instructions = 200000;     ///< of one run
    int milliseconds = 100;        ///< of processor time; catches few but costly instructions
    std::size_t memory = 8u << 20; ///< bytes of all scripts of the sandbox together
};

/// Runs Lua 5.4 texts that are not trusted. A script sees arithmetic, the mathematical functions
/// (as `sin(x)` and as `math.sin(x)`), string and table basics, and what the host adds. It reaches
/// no file, process, module, debugger, other script or meta table, and nothing that runs long
/// outside the instruction count (patterns, `string.rep`, `table.sort`) or could swallow the stop
/// (`pcall`, coroutines). Globals a script assigns are its own and last as long as the script. One
/// thread at a time; scripts fail with a Result, never with an exception.
class NODES_EXPORT LuaSandbox
{
public:
    using Arguments = std::vector<SignalValue>;
    /// Called by a script. An error value stops the script with the error's detail as its text;
    /// an empty value is nil. Must not throw.
    using Function = std::function<SignalValue(const Arguments &)>;
    /// Number of a compiled script, from 0.
    using Script = std::size_t;

    explicit LuaSandbox(LuaLimits limits = {});
    ~LuaSandbox();
    LuaSandbox(const LuaSandbox &) = delete;
    LuaSandbox &operator=(const LuaSandbox &) = delete;

    /// Adds a function that every script sees.
    void AddFunction(const std::string &name, Function function);

    /// Compiles an expression (`value + 1`) or a block that returns (`if ... return x end`).
    /// ParseError gives the line and what is wrong; `name` stands for the text in messages.
    [[nodiscard]] Result Compile(const std::string &name, const std::string &text, Script &script);

    /// Compiles a block: it need not return anything, and an expression alone is none.
    [[nodiscard]] Result CompileBlock(const std::string &name, const std::string &text,
                                      Script &script);

    /// Sets a global of that script. Numbers, logical values and texts arrive as such, an empty
    /// value and errors as nil.
    void SetVariable(Script script, const char *name, const SignalValue &value);

    /// Runs the script; `value` takes what it returned (integers that fit as Int, other numbers as
    /// Double, nil as an empty value). Failed carries Lua's message, LimitExceeded says which limit
    /// stopped it; `value` is then untouched and the sandbox stays usable.
    [[nodiscard]] Result Run(Script script, SignalValue &value);

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

} // namespace Nodes
