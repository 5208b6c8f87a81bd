#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace trovarium {

// The entries of a list, in blocks: one that comes or goes moves only those of its own block, so that tens of
// thousands come and go one by one anywhere in it. Indexes are 0-based and must exist.
class ListItems {
public:
    struct Item {
        std::string text;
        bool selected = false;
    };

    int size() const { return m_starts.back(); }
    Item& operator[](int index);
    const Item& operator[](int index) const;

    void insert(int index, Item item); // at `size` too
    void erase(int index);
    void clear();

private:
    using Block = std::vector<Item>;

    std::size_t blockOf(int index) const;
    void shiftBehind(std::size_t block, int by);

    std::vector<Block> m_blocks{1};
    std::vector<int> m_starts{0, 0}; // of each block, and the number of all
};

} // namespace trovarium
