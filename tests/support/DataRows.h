#pragma once

#include <QtTest>

/// The table of a data-driven test: `const DataRows<QString, int> row("keys", "count");` names its
/// columns, `row("two keys", "ab", 2);` adds a case.
template <class... Columns> class DataRows
{
public:
    template <class... Names> explicit DataRows(Names... names)
    {
        static_assert(sizeof...(Names) == sizeof...(Columns));
        (QTest::addColumn<Columns>(names), ...);
    }
    void operator()(const char *name, const Columns &...values) const
    {
        (QTest::newRow(name) << ... << values);
    }
};
