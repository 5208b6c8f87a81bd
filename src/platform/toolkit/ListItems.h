// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace trovarium {

// The entries of a list, in blocks: inserting or removing one moves only those of its block, so that tens of thousands
// can be inserted or removed one by one anywhere. Indexes are 0-based and must exist.
class ListItems {
public:
    struct Item {
        std::string text;
        bool selected = false;
    };

    int size() const { return m_starts.back(); }
    const Item& operator[](int index) const;
    Item& operator[](int index) { return const_cast<Item&>(std::as_const(*this)[index]); }

    void insert(int index, Item item); // `index` may be `size`
    void erase(int index);
    void clear();

private:
    using Block = std::vector<Item>;

    std::size_t blockOf(int index) const;
    void shiftBehind(std::size_t block, int by);

    std::vector<Block> m_blocks{1};
    std::vector<int> m_starts{0, 0}; // index of each block's first entry; the last one is the number of all entries
};

} // namespace trovarium
