#pragma once

#include <QTest>

/** Declares the columns of a test's data: columns<int, QString>("id", "text"). */
template <typename... Types, typename... Names> void columns(Names... p_names)
{
    (QTest::addColumn<Types>(p_names), ...);
}

/** Adds a row to a test's data; a text in quotation marks comes as a QString. */
template <typename... Values> void row(const char* p_name, const Values&... p_values)
{
    (QTest::newRow(p_name) << ... << p_values);
}

/** One column of numbers, and a row for each, which is named by it. */
inline void numberRows(const char* p_column, std::initializer_list<int> p_numbers)
{
    QTest::addColumn<int>(p_column);
    for (const int number : p_numbers) {
        QTest::addRow("%d", number) << number;
    }
}
