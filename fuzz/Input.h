// The bytes of one run, taken from the start. After the last byte only zeros are read, so every input has a
// meaning and a shorter input is a simpler case.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace fuzz {

class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : m_data(data), m_size(size) {}

    bool Empty() const { return m_at == m_size; }

    std::uint8_t Byte() { return Empty() ? std::uint8_t{0} : m_data[m_at++]; }

    /// A number below `bound`, from one byte.
    std::size_t Below(std::size_t bound) { return Byte() % bound; }

    /// One entry of a table of at most 256.
    template <typename T, std::size_t N>
    const T& Pick(const T (&table)[N]) {
        static_assert(N <= 256);
        return table[Below(N)];
    }

    /// The next `length` bytes as a text, or fewer at the end of the input.
    std::string Take(std::size_t length) {
        const std::size_t count = length < m_size - m_at ? length : m_size - m_at;
        std::string text(count, '\0');
        for (char& c : text) {
            c = static_cast<char>(m_data[m_at++]);
        }
        return text;
    }

    std::string Rest() { return Take(m_size - m_at); }

private:
    const std::uint8_t* m_data;
    std::size_t m_size;
    std::size_t m_at = 0;
};

} // namespace fuzz
