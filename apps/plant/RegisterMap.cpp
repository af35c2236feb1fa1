#include "apps/plant/RegisterMap.h"

#include "apps/plant/RegisterRows.h"

#include <algorithm>

namespace Plant {

namespace {
Rows build()
{
    Rows rows;
    for (std::size_t n = 0; n < BoilerHouse::boilerCount; ++n)
        addBoilerRows(rows, n);
    addNetworkRows(rows);
    return rows;
}
} // namespace

const std::vector<RegisterEntry> &registerMap()
{
    static const Rows rows = build();
    return rows;
}

const RegisterEntry *findRegister(const std::string &name)
{
    const Rows &rows = registerMap();
    const auto found = std::find_if(rows.begin(), rows.end(),
                                    [&name](const RegisterEntry &row) { return row.name == name; });
    return found == rows.end() ? nullptr : &*found;
}

int tableSize(RegisterTable table)
{
    int size = 0;
    for (const RegisterEntry &row : registerMap()) {
        if (row.table == table)
            size = std::max(size, row.address + row.width());
    }
    return size;
}

} // namespace Plant
