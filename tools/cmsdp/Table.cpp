// Columns are aligned by bytes, which is right because every cell is printable ASCII by now.
//
// Tests: tests/tool/TableTest.cpp
#include "Table.h"

#include <algorithm>

namespace cmsdp {

namespace {

constexpr std::size_t kLabelWidth = 17;

// Breaks a text at line feeds and at the last blank that fits; a word that is too long keeps its line.
std::vector<std::string> Wrapped(const std::string& text, std::size_t width) {
    std::vector<std::string> lines;
    std::size_t begin = 0;
    while (begin < text.size()) {
        const std::size_t stop = std::min(text.find('\n', begin), text.size());
        std::size_t end = stop;
        if (stop - begin > width) {
            const std::size_t blank = text.rfind(' ', begin + width);
            end = blank != std::string::npos && blank > begin ? blank : std::min(text.find(' ', begin), stop);
        }
        lines.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return lines;
}

std::string Coloured(const std::string& text, const char* sequence, bool colour) {
    return colour && !text.empty() ? sequence + text + "\x1b[0m" : text;
}

const char* SequenceOf(Mood mood) {
    switch (mood) {
    case Mood::kGood:
        return "\x1b[32m";
    case Mood::kBad:
        return "\x1b[33m";
    default:
        return "\x1b[1m";
    }
}

std::string CellLine(const std::string& line, Mood mood, bool colour) {
    return mood == Mood::kPlain ? line : Coloured(line, SequenceOf(mood), colour);
}

// The columns of one output line; no blanks after the last of them.
class LineOut {
public:
    LineOut(std::string& out, std::size_t cellWidth) : m_out(out), m_cellWidth(cellWidth) {}
    ~LineOut() { m_out += '\n'; }
    LineOut(const LineOut&) = delete;
    LineOut& operator=(const LineOut&) = delete;

    void Label(const std::string& label) {
        m_out += label;
        m_gap = label.size() < kLabelWidth ? kLabelWidth - label.size() : 1;
    }
    void Column(const std::string& plain, const std::string& shown) {
        if (!plain.empty()) {
            m_out.append(m_gap, ' ').append(shown);
            m_gap = 0;
        }
        m_gap += plain.size() < m_cellWidth ? m_cellWidth - plain.size() + 2 : 2;
    }

private:
    std::string& m_out;
    std::size_t m_cellWidth;
    std::size_t m_gap = 0;
};

void RenderRow(std::string& out, const Row& row, std::size_t cellWidth, bool colour) {
    std::vector<std::vector<std::string>> columns;
    std::size_t height = 0;
    for (const Cell& cell : row.cells) {
        columns.push_back(Wrapped(cell.text, cellWidth));
        height = std::max(height, columns.back().size());
    }
    for (std::size_t i = 0; i < height; ++i) {
        LineOut line(out, cellWidth);
        line.Label(i == 0 ? "  " + row.label : "");
        for (std::size_t k = 0; k < columns.size(); ++k) {
            const std::string plain = i < columns[k].size() ? columns[k][i] : "";
            line.Column(plain, CellLine(plain, row.cells[k].mood, colour));
        }
    }
}

} // namespace

std::size_t CellWidth(std::size_t width, std::size_t columns) {
    constexpr std::size_t narrowest = 20;
    constexpr std::size_t gap = 2;
    const std::size_t taken = kLabelWidth + gap * (columns - 1);
    return std::max(width < taken ? 0 : (width - taken) / columns, narrowest);
}

std::string RenderTable(const std::vector<std::string>& headers, const std::vector<Block>& blocks,
                        std::size_t cellWidth, bool colour) {
    std::string out;
    if (!headers.empty()) {
        LineOut line(out, cellWidth);
        line.Label("");
        for (const std::string& header : headers) {
            line.Column(header, Coloured(header, SequenceOf(Mood::kPlain), colour));
        }
    }
    for (const Block& block : blocks) {
        out += out.empty() ? "" : "\n";
        out += Coloured(block.title, SequenceOf(Mood::kPlain), colour) + "\n";
        for (const Row& row : block.rows) {
            RenderRow(out, row, cellWidth, colour);
        }
    }
    return out;
}

std::vector<Block> SideBySide(std::vector<Block> left, const std::vector<Block>& right) {
    for (std::size_t i = 0; i < left.size(); ++i) {
        for (std::size_t k = 0; k < left[i].rows.size(); ++k) {
            const std::vector<Cell>& more = right.at(i).rows.at(k).cells;
            left[i].rows[k].cells.insert(left[i].rows[k].cells.end(), more.begin(), more.end());
        }
    }
    return left;
}

} // namespace cmsdp
