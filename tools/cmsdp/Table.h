// Blocks of labelled rows with one or more columns of values, for a terminal or a log.
//
// Tests: tests/tool/TableTest.cpp
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace cmsdp {

enum class Mood { kPlain, kGood, kBad };

/// A value. A line feed in it begins a new line; longer lines are broken at blanks.
struct Cell {
    std::string text;
    Mood mood = Mood::kPlain;
};

struct Row {
    std::string label;
    std::vector<Cell> cells; ///< one per column; a row of empty cells is left out
};

struct Block {
    std::string title;
    std::vector<Row> rows;
};

/// How wide the cells of a table with so many columns are when the table fills `width` columns of a screen.
std::size_t CellWidth(std::size_t width, std::size_t columns);

/// The table as text. `headers` names the columns and is empty for a single column without a name. Colour
/// adds escape sequences and changes nothing else.
std::string RenderTable(const std::vector<std::string>& headers, const std::vector<Block>& blocks,
                        std::size_t cellWidth, bool colour);

/// Puts the columns of two tables with the same rows next to each other.
std::vector<Block> SideBySide(std::vector<Block> left, const std::vector<Block>& right);

} // namespace cmsdp
