#pragma once

#include <cstddef>

/// Records what operator new allocates while the object lives, and makes one allocation fail on
/// purpose, in a test that links to tav::allocations.
///
/// At most one object at a time, and only one thread meanwhile.
class Allocations {
public:
    Allocations();
    ~Allocations();

    Allocations(const Allocations&) = delete;
    Allocations& operator=(const Allocations&) = delete;

    int count() const { return m_count; }
    /// The bytes of the largest one; 0 when there was none.
    std::size_t largest() const { return m_largest; }

    /// The `nth` allocation from now on (1: the next one) throws std::bad_alloc.
    void fail(int nth) { m_failing = m_count + nth; }

    /// For operator new.
    static void enter(std::size_t size);

private:
    int m_count = 0;
    int m_failing = 0;
    std::size_t m_largest = 0;
};
