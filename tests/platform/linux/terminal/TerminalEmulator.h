#pragma once

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace thermopix {

/// Shows what a terminal of endless height and a given width makes of the bytes that it gets: it wraps long lines,
/// keeps them together when its width changes, and knows the few escape sequences that the readout uses. Anything
/// else is an error.
class TerminalEmulator {
public:
    explicit TerminalEmulator(std::size_t columns) : columns_(columns) {}

    void feed(std::string_view bytes) {
        for (std::size_t i = 0; i < bytes.size();) {
            if (bytes[i] == '\x1b') {
                i = obey(bytes, i);
            } else if (bytes[i] == '\r') {
                column_ = 0;
                ++i;
            } else if (bytes[i] == '\n') {
                ++row_;
                line();
                ++i;
            } else {
                std::size_t length = 1;
                while (i + length < bytes.size() && (static_cast<unsigned char>(bytes[i + length]) & 0xC0U) == 0x80U) {
                    ++length;
                }
                put(std::string(bytes.substr(i, length)));
                i += length;
            }
        }
    }

    /// As most terminals do it: lines are wrapped anew, and the cursor stays with its text.
    void resize(std::size_t columns) {
        std::vector<Row> rewrapped;
        std::size_t cursorRow = 0;
        for (std::size_t i = 0; i < rows_.size();) {
            if (i == row_) {
                cursorRow = rewrapped.size();
            }
            std::vector<std::string> whole;
            do {
                whole.insert(whole.end(), rows_[i].cells.begin(), rows_[i].cells.end());
                ++i;
            } while (i < rows_.size() && rows_[i].continues);
            bool isFirst = true;
            do {
                Row row;
                row.continues = !isFirst;
                isFirst = false;
                const auto count = std::min(columns, whole.size());
                row.cells.assign(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(count));
                whole.erase(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(count));
                rewrapped.push_back(row);
            } while (!whole.empty());
        }
        rows_ = rewrapped;
        row_ = cursorRow;
        columns_ = columns;
    }

    /// The rows above the cursor, without trailing blanks.
    [[nodiscard]] std::vector<std::string> rowsAbove() const { return texts(0, row_); }
    /// The row of the cursor and those below it.
    [[nodiscard]] std::vector<std::string> rowsFromCursorOn() const { return texts(row_, rows_.size()); }
    [[nodiscard]] std::size_t cursorColumn() const { return column_; }
    [[nodiscard]] bool isCursorVisible() const { return isCursorVisible_; }
    [[nodiscard]] bool isPlain() const { return isPlain_; }

private:
    struct Row {
        std::vector<std::string> cells;
        bool continues = false;
    };

    Row& line() {
        if (rows_.size() <= row_) {
            rows_.resize(row_ + 1);
        }
        return rows_[row_];
    }

    void put(const std::string& character) {
        if (column_ == columns_) {
            column_ = 0;
            ++row_;
            line().continues = true;
        }
        auto& cells = line().cells;
        if (cells.size() <= column_) {
            cells.resize(column_ + 1, " ");
        }
        cells[column_] = character;
        ++column_;
    }

    std::size_t obey(std::string_view bytes, std::size_t start) {
        auto end = start + 2;
        while (end < bytes.size() && (bytes[end] < '@' || bytes[end] > '~')) {
            ++end;
        }
        const auto sequence = bytes.substr(start + 1, end - start);
        const auto parameter = bytes.substr(start + 2, end - start - 2);
        if (sequence == "[?25l" || sequence == "[?25h") {
            isCursorVisible_ = sequence.back() == 'h';
        } else if (sequence == "[K") {
            clearRestOfLine();
        } else if (sequence == "[J") {
            clearRestOfLine();
            rows_.resize(row_ + 1);
        } else if (sequence.back() == 'A') {
            const auto up = std::stoul(std::string(parameter));
            row_ = up > row_ ? 0 : row_ - up;
        } else if (sequence.back() == 'm') {
            isPlain_ = parameter == "0";
        } else {
            throw std::runtime_error("unknown sequence " + std::string(sequence));
        }
        return end + 1;
    }

    /// What is cleared is no part of a longer line any more.
    void clearRestOfLine() {
        line().cells.resize(std::min(line().cells.size(), column_));
        line().continues = line().continues && column_ > 0;
        if (row_ + 1 < rows_.size()) {
            rows_[row_ + 1].continues = false;
        }
    }

    [[nodiscard]] std::vector<std::string> texts(std::size_t from, std::size_t to) const {
        std::vector<std::string> all;
        for (auto i = from; i < to && i < rows_.size(); ++i) {
            std::string text;
            for (const auto& cell : rows_[i].cells) {
                text += cell;
            }
            text.erase(text.find_last_not_of(' ') + 1);
            all.push_back(text);
        }
        return all;
    }

    std::size_t columns_;
    std::vector<Row> rows_ = std::vector<Row>(1);
    std::size_t row_ = 0;
    std::size_t column_ = 0;
    bool isCursorVisible_ = true;
    bool isPlain_ = true;
};

}  // namespace thermopix
