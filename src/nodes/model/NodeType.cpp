#include "nodes/model/NodeType.h"

#include "nodes/model/KindTable.h"

#include <array>
#include <charconv>
#include <cstdio>

namespace Nodes {

namespace {

struct FamilyName
{
    NodeType::enNodeType family;
    const char *russian;
};

constexpr std::array familyNames{
    FamilyName{NodeType::TypeSystem, "Система"},
    FamilyName{NodeType::TypeFolder, "Папки"},
    FamilyName{NodeType::TypeDriver, "Драйверы"},
    FamilyName{NodeType::TypeDriverGroup, "Группы опроса"},
    FamilyName{NodeType::TypeSignal, "Сигналы"},
    FamilyName{NodeType::TypeSecurity, "Пользователи и права"},
    FamilyName{NodeType::TypeSubsystem, "Подсистемы"},
    FamilyName{NodeType::TypeAlarm, "Тревоги"},
    FamilyName{NodeType::TypeState, "Состояния"},
    FamilyName{NodeType::TypeTimer, "Таймеры"},
    FamilyName{NodeType::TypeMenu, "Меню"},
    FamilyName{NodeType::TypeChartItem, "Элементы графиков"},
    FamilyName{NodeType::TypeChartAxis, "Оси графиков"},
    FamilyName{NodeType::TypeReportItem, "Элементы отчётов"},
    FamilyName{NodeType::TypeArchive, "Архивы"},
    FamilyName{NodeType::TypeArgument, "Аргументы"},
    FamilyName{NodeType::TypeAction, "Действия"},
    FamilyName{NodeType::TypeFrame, "Фреймы"},
    FamilyName{NodeType::TypeWindow, "Окна"},
    FamilyName{NodeType::TypeComposition, "Композиции"},
    FamilyName{NodeType::TypeLayer, "Слои"},
    FamilyName{NodeType::TypeWidget, "Виджеты"},
    FamilyName{NodeType::TypeArchiverAction, "Действия архива"},
};

unsigned parseCode(std::string_view text)
{
    if (text.substr(0, 2) != "0x")
        return 0;
    unsigned code = 0;
    const char *end = text.data() + text.size();
    const auto parsed = std::from_chars(text.data() + 2, end, code, 16);
    return parsed.ec == std::errc() && parsed.ptr == end ? code : 0;
}

} // namespace

NodeType::NodeType(std::string_view typeName)
{
    if (const KindInfo *kind = KindTable::Instance().FindByKey(typeName))
        *this = kind->type;
    else if (const unsigned code = parseCode(typeName))
        *this = NodeType(static_cast<enNodeSubtype>(code));
}

std::string NodeType::ToString() const
{
    if (const KindInfo *kind = KindTable::Instance().Find(*this))
        return kind->key;
    std::array<char, 16> buffer{};
    const int length = std::snprintf(buffer.data(), buffer.size(), "0x%X", GetCode());
    return {buffer.data(), static_cast<std::size_t>(length)};
}

std::string NodeType::GetTypeNameTranslated() const
{
    for (const FamilyName &name : familyNames) {
        if (name.family == m_family)
            return name.russian;
    }
    return ToString();
}

std::string NodeType::GetSubtypeNameTranslated() const
{
    if (const KindInfo *kind = KindTable::Instance().Find(*this))
        return kind->nameRu;
    return GetTypeNameTranslated();
}

} // namespace Nodes
