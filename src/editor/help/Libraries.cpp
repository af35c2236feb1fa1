#include "editor/help/Libraries.h"

namespace Editor {

const QVector<Library> &Libraries()
{
    static const QVector<Library> rows = {
        {"qtbase5-dev", "Qt", "окна и рисование", "LGPL-3.0"},
        {"qtmultimedia5-dev", "Qt Multimedia", "звуки тревог", "LGPL-3.0"},
        {"libqt5svg5-dev", "Qt SVG", "мнемосимволы и значки", "LGPL-3.0"},
        {"qtdeclarative5-dev", "Qt QML", "выражения в отчётах", "LGPL-3.0"},
        {"libqwt-qt5-dev", "Qwt", "графики", "Qwt 1.0 (LGPL-2.1 с исключениями)"},
        {"libboost-dev", "Boost", "сигналы, даты", "BSL-1.0"},
        {"libpugixml-dev", "pugixml", "файлы проектов", "MIT"},
        {"libmsgpack-cxx-dev", "msgpack-cxx", "двоичные копии узлов", "BSL-1.0"},
        {"libsqlite3-dev", "SQLite", "архив и журнал в файле", "общественное достояние"},
        {"libpqxx-dev", "libpqxx", "архив и журнал на сервере", "BSD-3-Clause"},
        {"libpq-dev", "libpq", "связь с сервером PostgreSQL", "PostgreSQL"},
        {"libzstd-dev", "Zstandard", "сжатие архива", "BSD-3-Clause"},
        {"libxlsxwriter-dev", "libxlsxwriter", "отчёты в таблицах", "BSD-2-Clause"},
        {"zlib1g-dev", "zlib", "сжатие таблиц", "Zlib"},
        {"libzint-dev", "Zint", "штрихкоды в отчётах", "BSD-3-Clause"},
        {"libmodbus-dev", "libmodbus", "драйвер Modbus TCP", "LGPL-2.1"},
        {"libmosquitto-dev", "libmosquitto", "драйвер MQTT", "EPL-2.0 или EDL-1.0"},
        {"libsodium-dev", "libsodium", "хеши паролей, цепочка журнала", "ISC"},
        {"liblua5.4-dev", "Lua", "сценарии", "MIT"},
        {"libcli11-dev", "CLI11", "параметры командной строки", "BSD-3-Clause"},
        {"fonts-dejavu-core", "DejaVu", "шрифты", "Bitstream Vera, общественное достояние"},
    };
    return rows;
}

} // namespace Editor
