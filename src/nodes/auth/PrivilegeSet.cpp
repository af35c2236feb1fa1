#include "nodes/auth/PrivilegeSet.h"

#include <array>

namespace Nodes {

namespace {

struct PrivilegeRow
{
    enPrivilegeType type;
    const char *token;
    const char *nameRu;
};

constexpr std::array rows{
    PrivilegeRow{PrivilegeView, "view", "Просмотр"},
    PrivilegeRow{PrivilegeWrite, "write", "Запись значений"},
    PrivilegeRow{PrivilegeOpen, "open", "Открытие окон"},
    PrivilegeRow{PrivilegeClose, "close", "Закрытие окон"},
    PrivilegeRow{PrivilegeCommand, "command", "Команды"},
    PrivilegeRow{PrivilegeAcknowledge, "acknowledge", "Квитирование"},
    PrivilegeRow{PrivilegeLaunch, "launch", "Запуск программ"},
    PrivilegeRow{PrivilegeShelve, "shelve", "Откладывание тревог"},
    PrivilegeRow{PrivilegeConfigure, "configure", "Настройка"},
};

const PrivilegeRow *find(std::string_view token)
{
    for (const PrivilegeRow &row : rows) {
        if (token == row.token)
            return &row;
    }
    return nullptr;
}

const PrivilegeRow *find(enPrivilegeType type)
{
    for (const PrivilegeRow &row : rows) {
        if (type == row.type)
            return &row;
    }
    return nullptr;
}

} // namespace

PrivilegeSet PrivilegeSet::All()
{
    PrivilegeSet all;
    for (const PrivilegeRow &row : rows)
        all.Add(row.type);
    return all;
}

PrivilegeSet PrivilegeSet::FromText(std::string_view text, std::string *unknown)
{
    PrivilegeSet set;
    while (!text.empty()) {
        const std::size_t blank = text.find(' ');
        const std::string_view word = text.substr(0, blank);
        text.remove_prefix(blank == std::string_view::npos ? text.size() : blank + 1);
        if (word == "all")
            set.m_bits |= All().m_bits;
        else if (const PrivilegeRow *row = find(word))
            set.Add(row->type);
        else if (!word.empty() && unknown)
            *unknown += (unknown->empty() ? "" : " ") + std::string(word);
    }
    return set;
}

std::string PrivilegeToken(enPrivilegeType type)
{
    const PrivilegeRow *row = find(type);
    return row ? row->token : std::string();
}

std::string PrivilegeName(enPrivilegeType type)
{
    const PrivilegeRow *row = find(type);
    return row ? row->nameRu : std::string();
}

} // namespace Nodes
