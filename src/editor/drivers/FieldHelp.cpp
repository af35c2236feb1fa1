#include "editor/drivers/FieldHelp.h"

#include <string_view>

namespace Editor {

namespace {

struct Row
{
    const char *kind; ///< the end of its key
    const char *property;
    const char *help;
};

constexpr Row rows[] = {
    {"Driver", "enabled", "Выключенный не запускается, его сигналы недостоверны."},
    {"modbusDriver", "host", "Имя, IPv4 или IPv6; ${имя} станция возьмёт из своих параметров."},
    {"modbusDriver", "port", "Число от 1 до 65535, обычно 502; можно ${имя}."},
    {"modbusDriver", "unit", "За шлюзом — номер устройства на линии, иначе обычно 1."},
    {"modbusDriver", "timeout", "На один запрос, вместе с открытием соединения."},
    {"modbusDriver", "retries", "Столько запросов подряд без ответа — и сигналы недостоверны."},
    {"modbusDriver", "reconnectMin", "Первая пауза; каждая следующая вдвое дольше."},
    {"modbusDriver", "reconnectMax", "Дольше этой паузы станция не ждёт."},
    {"hostDriver", "period", "Скорости и доли времени появляются со второго опроса."},
    {"simulatorDriver", "period", "Так часто вычисляются все формулы."},
    {"securityUser", "enabled", "Запрещённый не войдёт."},
    {"securityUser", "passwordless", "Войдёт каждый, кто выберет это имя."},
};

} // namespace

QString FieldHelp(const std::string &kind, const std::string &property)
{
    for (const Row &row : rows) {
        const std::string_view end = row.kind;
        if (property == row.property && kind.size() >= end.size() &&
            kind.compare(kind.size() - end.size(), end.size(), end) == 0)
            return QString::fromUtf8(row.help);
    }
    return {};
}

} // namespace Editor
