#pragma once

#include <cstddef>
#include <utility>
#include <vector>

namespace Widgets {

/// A vector that grows at the end and is trimmed at the front at a cost that does not depend on
/// what stays: the memory of trimmed elements is given back when it outgrows the rest.
template <class T> class RollingVector
{
public:
    [[nodiscard]] std::size_t size() const { return m_elements.size() - m_front; }
    [[nodiscard]] bool empty() const { return size() == 0; }
    [[nodiscard]] const T *data() const { return m_elements.data() + m_front; }
    [[nodiscard]] const T *begin() const { return data(); }
    [[nodiscard]] const T *end() const { return m_elements.data() + m_elements.size(); }
    [[nodiscard]] const T &operator[](std::size_t i) const { return m_elements[m_front + i]; }
    [[nodiscard]] T &operator[](std::size_t i) { return m_elements[m_front + i]; }
    [[nodiscard]] const T &front() const { return m_elements[m_front]; }
    [[nodiscard]] const T &back() const { return m_elements.back(); }
    [[nodiscard]] T &back() { return m_elements.back(); }

    void reserve(std::size_t count) { m_elements.reserve(m_front + count); }
    void push_back(T element) { m_elements.push_back(std::move(element)); }
    void pop_back() { m_elements.pop_back(); }

    /// Takes `count` elements from the front, at most all.
    void trimFront(std::size_t count)
    {
        if (count >= size()) {
            clear();
            return;
        }
        m_front += count;
        if (m_front > m_elements.size() / 2) {
            m_elements = std::vector<T>(begin(), end());
            m_front = 0;
        }
    }
    /// Also gives the memory back.
    void clear()
    {
        m_elements = std::vector<T>();
        m_front = 0;
    }

private:
    std::vector<T> m_elements;
    std::size_t m_front = 0;
};

} // namespace Widgets
