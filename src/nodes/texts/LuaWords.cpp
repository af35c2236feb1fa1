#include "nodes/texts/LuaCheck.h"

namespace Nodes::LuaCheck {

namespace {

const TextWord words[] = {
    {TextWord::Keyword, "and", "и то, и другое"},
    {TextWord::Keyword, "or", "одно из двух; x or 0: ноль, когда x нет"},
    {TextWord::Keyword, "not", "не"},
    {TextWord::Keyword, "true", "да"},
    {TextWord::Keyword, "false", "нет"},
    {TextWord::Keyword, "nil", "значения нет"},
    {TextWord::Keyword, "if", "если: if x > 1 then ... else ... end"},
    {TextWord::Keyword, "then", "то"},
    {TextWord::Keyword, "else", "иначе"},
    {TextWord::Keyword, "elseif", "иначе если"},
    {TextWord::Keyword, "end", "конец if, for, while, function"},
    {TextWord::Keyword, "return", "вернуть значение"},
    {TextWord::Keyword, "local", "своя переменная: local x = 1"},
    {TextWord::Keyword, "for", "повторять: for i = 1, 10 do ... end"},
    {TextWord::Keyword, "while", "пока: while x < 1 do ... end"},
    {TextWord::Keyword, "repeat", "повторять до: repeat ... until x > 1"},
    {TextWord::Keyword, "until", "до тех пор, как"},
    {TextWord::Keyword, "do", "начало повторяемого"},
    {TextWord::Keyword, "break", "закончить повторение"},
    {TextWord::Keyword, "in", "по всем: for k, v in pairs(t) do ... end"},
    {TextWord::Keyword, "function", "своя функция: function f(x) ... end"},
    {TextWord::Keyword, "goto", "перейти к метке"},
    {TextWord::Function, "abs", "abs(x): величина без знака"},
    {TextWord::Function, "min", "min(a, b, ...): наименьшее"},
    {TextWord::Function, "max", "max(a, b, ...): наибольшее"},
    {TextWord::Function, "floor", "floor(x): целое не больше x"},
    {TextWord::Function, "ceil", "ceil(x): целое не меньше x"},
    {TextWord::Function, "sqrt", "sqrt(x): корень"},
    {TextWord::Function, "exp", "exp(x): e в степени x"},
    {TextWord::Function, "log", "log(x), log(x, 10): логарифм"},
    {TextWord::Function, "sin", "sin(x): синус, x в радианах"},
    {TextWord::Function, "cos", "cos(x): косинус, x в радианах"},
    {TextWord::Function, "tan", "tan(x): тангенс, x в радианах"},
    {TextWord::Function, "asin", "asin(x): арксинус"},
    {TextWord::Function, "acos", "acos(x): арккосинус"},
    {TextWord::Function, "atan", "atan(y, x): угол вектора"},
    {TextWord::Function, "rad", "rad(x): градусы в радианы"},
    {TextWord::Function, "deg", "deg(x): радианы в градусы"},
    {TextWord::Function, "fmod", "fmod(x, y): остаток"},
    {TextWord::Function, "modf", "modf(x): целая и дробная часть"},
    {TextWord::Function, "random", "random(): от 0 до 1; random(a, b): целое"},
    {TextWord::Function, "tointeger", "tointeger(x): целое, если x целое"},
    {TextWord::Function, "ult", "ult(a, b): a меньше b без знака"},
    {TextWord::Variable, "pi", "3,14159..."},
    {TextWord::Variable, "huge", "бесконечность"},
    {TextWord::Variable, "maxinteger", "наибольшее целое"},
    {TextWord::Variable, "mininteger", "наименьшее целое"},
    {TextWord::Variable, "math", "math.sin(x) и другие, то же, что sin(x)"},
    {TextWord::Variable, "string", "string.format(\"%.1f\", x) и другие"},
    {TextWord::Variable, "table", "table.insert(t, x) и другие"},
    {TextWord::Function, "tostring", "tostring(x): текст"},
    {TextWord::Function, "tonumber", "tonumber(s): число из текста"},
    {TextWord::Function, "type", "type(x): \"number\", \"string\", \"boolean\", \"nil\""},
    {TextWord::Function, "pairs", "pairs(t): все пары таблицы"},
    {TextWord::Function, "ipairs", "ipairs(t): по порядку номеров"},
    {TextWord::Function, "next", "next(t, k): следующая пара"},
    {TextWord::Function, "select", "select(n, ...): значения с номера n"},
    {TextWord::Function, "assert", "assert(x, \"почему\"): прервать, если x ложно"},
    {TextWord::Function, "error", "error(\"почему\"): прервать"},
};

} // namespace

std::vector<TextWord> CommonWords()
{
    return {std::begin(words), std::end(words)};
}

} // namespace Nodes::LuaCheck
