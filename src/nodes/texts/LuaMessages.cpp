#include "nodes/texts/LuaMessages.h"

#include <cstdlib>
#include <regex>
#include <vector>

namespace Nodes {

namespace {

struct Translation
{
    std::regex pattern;
    const char *russian; ///< $1, $2: what the pattern has in brackets
};

// Of what has been cut off from " near" on.
const std::vector<Translation> &translations()
{
    static const std::vector<Translation> rows{
        {std::regex("unexpected symbol"), "здесь не ожидается"},
        {std::regex("unfinished string"), "текст в кавычках не закрыт"},
        {std::regex("unfinished long (string|comment).*"), "не закрыто ]]"},
        {std::regex("malformed number"), "число написано неверно"},
        {std::regex("invalid escape sequence"), "после \\ стоит не то"},
        {std::regex("'?<eof>'? expected"), "лишнее: здесь текст должен кончаться"},
        {std::regex("<name> expected"), "здесь должно стоять имя"},
        {std::regex("'?([^']+)'? expected \\(to close '([^']+)' at line (\\d+)\\)"),
         "нет «$1», закрывающего «$2» из строки $3"},
        {std::regex("'?([^']+)'? expected"), "перед этим нужно «$1»"},
        {std::regex("syntax error"), "ошибка записи"},
        {std::regex("cannot use '...' outside.*"), "«...» можно писать только в функции"},
        {std::regex("attempt to call a nil value \\(\\w+ '([^']+)'\\)"), "функции «$1» нет"},
        {std::regex("attempt to call a (\\w+) value.*"), "вызывается то, что не функция ($1)"},
        {std::regex("attempt to perform arithmetic on a nil value \\(\\w+ '([^']+)'\\)"),
         "«$1» не имеет значения"},
        {std::regex("attempt to perform arithmetic on a (\\w+) value.*"),
         "действие над тем, что не число ($1)"},
        {std::regex("attempt to compare .*"), "сравниваются значения разных видов"},
        {std::regex("attempt to concatenate a nil value \\(\\w+ '([^']+)'\\)"),
         "«$1» не имеет значения"},
        {std::regex("attempt to index .*"), "поле берётся у того, что его не имеет"},
        {std::regex("bad argument #(\\d+) to '([^']+)' \\((.*)\\)"),
         "значение $1 функции «$2» не подходит: $3"},
        {std::regex("too many instructions.*"), "слишком много действий: бесконечный цикл?"},
        {std::regex("the formula gives no value"), "формула не даёт значения"},
        {std::regex("the formula gives (.*)"), "формула даёт $1"},
        {std::regex("no signal '(.*)' in this driver"), "сигнала «$1» в этом имитаторе нет"},
        {std::regex("several signals are called '(.*)'"), "«$1» называются несколько сигналов"},
        {std::regex("signal '(.*)' is bad"), "сигнал «$1» недостоверен"},
        {std::regex("takes too long"), "выполняется слишком долго"},
        {std::regex("uses too much memory"), "занимает слишком много памяти"},
    };
    return rows;
}

constexpr std::size_t mostTold = 300; // bytes; matching takes stack for each of them
constexpr std::size_t mostQuoted = 60;

std::string pieceOf(const std::string &near)
{
    return near == "<eof>" ? "конец текста" : "«" + ShortText(near, mostQuoted) + "»";
}

bool isForeign(const std::string &near)
{
    return !near.empty() && static_cast<unsigned char>(near[0]) >= 0x80U;
}

// As the interpreter writes it: 'piece', '<\\209>' for a byte that it does not print, <eof>.
std::string readNear(std::string near)
{
    const bool isQuoted = near.size() > 1 && near.front() == '\'' && near.back() == '\'';
    if (isQuoted)
        near = near.substr(1, near.size() - 2);
    const bool isByte = near.size() > 3 && near.compare(0, 2, "<\\") == 0 && near.back() == '>';
    const int byte = isByte ? std::atoi(near.c_str() + 2) : 0;
    return byte > 0 ? std::string(1, char(byte)) : near;
}

} // namespace

std::string ShortText(const std::string &text, std::size_t most)
{
    if (text.size() <= most)
        return text;
    while (most > 0 && (static_cast<unsigned char>(text[most]) & 0xC0U) == 0x80U)
        --most; // of a letter, all or nothing
    return text.substr(0, most) + "…";
}

LuaMessage LuaMessage::Of(const std::string &message)
{
    LuaMessage read;
    const std::size_t number = message.find(':') + 1;
    const std::size_t behind = message.find_first_not_of("0123456789", number);
    const bool isPlaced = number > 0 && behind != std::string::npos && behind > number &&
                          message.compare(behind, 2, ": ") == 0;
    read.line = isPlaced ? std::atoi(message.c_str() + number) : 0;
    read.text = isPlaced ? message.substr(behind + 2) : message;
    const std::string mark = " near ";
    if (const std::size_t near = read.text.find(mark); near != std::string::npos) {
        read.near = readNear(read.text.substr(near + mark.size()));
        read.text.erase(near);
    }
    return read;
}

std::string LuaMessage::ToRussian() const
{
    if (near == "<eof>" && text == "unexpected symbol")
        return "текст обрывается, здесь должно стоять ещё что-то";
    if (isForeign(near))
        return pieceOf(near) + ": такого знака здесь быть не может, имена пишут латинскими буквами";
    const std::string told = ShortText(text, mostTold);
    std::string russian = told;
    for (const Translation &row : translations()) {
        std::smatch parts;
        if (!std::regex_match(told, parts, row.pattern))
            continue;
        russian = parts.format(row.russian);
        break;
    }
    return near.empty() ? russian : pieceOf(near) + ": " + russian;
}

} // namespace Nodes
