#include "nodes/texts/LuaMessages.h"

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
        {std::regex("takes too long"), "выполняется слишком долго"},
        {std::regex("uses too much memory"), "занимает слишком много памяти"},
    };
    return rows;
}

std::string pieceOf(const std::string &near)
{
    return near == "<eof>" ? "конец текста" : "«" + near + "»";
}

} // namespace

LuaMessage LuaMessage::Of(const std::string &message)
{
    static const std::regex placed("[^:]*:(\\d+): ([\\s\\S]*)");
    static const std::regex nearPiece("([\\s\\S]*) near '?([\\s\\S]*?)'?");
    LuaMessage read;
    std::smatch parts;
    const bool isPlaced = std::regex_match(message, parts, placed);
    read.line = isPlaced ? std::stoi(parts[1]) : 0;
    read.text = isPlaced ? parts[2].str() : message;
    const std::string told = read.text;
    if (std::regex_match(told, parts, nearPiece)) {
        read.text = parts[1];
        read.near = parts[2];
    }
    return read;
}

std::string LuaMessage::ToRussian() const
{
    if (near == "<eof>" && text == "unexpected symbol")
        return "текст обрывается, здесь должно стоять ещё что-то";
    std::string russian = text;
    for (const Translation &row : translations()) {
        std::smatch parts;
        if (!std::regex_match(text, parts, row.pattern))
            continue;
        russian = parts.format(row.russian);
        break;
    }
    return near.empty() ? russian : pieceOf(near) + ": " + russian;
}

} // namespace Nodes
