#pragma once

#include <QtTest>

#include <string>

Q_DECLARE_METATYPE(std::string)

namespace QTest {
template <> inline char *toString(const std::string &text)
{
    return toString(QString::fromStdString(text));
}
} // namespace QTest

/// The data of a test: its columns by their names, then a row a call.
template <class... Types> class Rows
{
public:
    template <class... Names> explicit Rows(Names... names)
    {
        (QTest::addColumn<Types>(names), ...);
    }
    void operator()(const char *name, const Types &...values) const
    {
        (QTest::newRow(name) << ... << values);
    }
};
