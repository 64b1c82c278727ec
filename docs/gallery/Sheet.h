#pragma once

#include <Corvane/Rasterloom/Bitmap.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

/// A sheet of pictures of one cell size, each with a label below it, in groups under headings.
class Sheet {
public:
    /// `letters` is the picture that make_letters.sh draws; cells are in pixels.
    Sheet(const std::filesystem::path& letters, std::int32_t columns, std::int32_t cellWidth, std::int32_t cellHeight);

    /// Begins a new row under a line of text.
    void AddHeading(const std::string& text);
    /// Puts the middle of a picture into the next cell; alpha is laid over checks. The label may have several lines.
    void Add(Corvane::Rasterloom::Bitmap& picture, const std::string& label);
    void Save(const std::filesystem::path& fileName);

private:
    struct Cell {
        std::unique_ptr<Corvane::Rasterloom::Bitmap> Picture; ///< null in a heading
        std::string Text;
    };

    std::int32_t PlaceCells(Corvane::Rasterloom::Bitmap* sheet);
    void Write(Corvane::Rasterloom::Bitmap& sheet, const std::string& text, std::int32_t left, std::int32_t top);

    std::int32_t m_columns;
    std::int32_t m_cellWidth;
    std::int32_t m_cellHeight;
    std::int32_t m_labelLines = 1;
    std::vector<Cell> m_cells;
    Corvane::Rasterloom::Bitmap m_letters;
};
