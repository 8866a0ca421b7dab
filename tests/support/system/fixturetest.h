#pragma once

#include <QObject>

#include <optional>

/** What the test program calls around each test function; see FixtureTest. */
class FixtureSlots : public QObject
{
    Q_OBJECT

private slots:
    void init() { begin(); }
    void cleanup() { end(); }

private:
    virtual void begin() = 0;
    virtual void end() = 0;
};

/** A test each of whose functions and rows has a new fixture, which goes when it is over. */
template <typename Fixture> class FixtureTest : public FixtureSlots
{
protected:
    std::optional<Fixture> m_bench;

    void begin() override { m_bench.emplace(); }
    void end() override { m_bench.reset(); }
};
