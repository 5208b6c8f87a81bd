// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/toolkit/ListItems.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace trovarium {

namespace {

constexpr std::size_t FullBlock = 512;

} // namespace

const ListItems::Item& ListItems::operator[](int index) const
{
    const std::size_t block = blockOf(index);
    return m_blocks[block][static_cast<std::size_t>(index - m_starts[block])];
}

void ListItems::insert(int index, Item item)
{
    // At the end of a block rather than at the start of the next one.
    std::size_t block = index == 0 ? 0 : blockOf(index - 1);
    if (m_blocks[block].size() == FullBlock) {
        // A full block is divided, but not when entries are only added at the end.
        const std::size_t kept = index == size() ? FullBlock : FullBlock / 2;
        const auto rest = m_blocks[block].begin() + static_cast<std::ptrdiff_t>(kept);
        Block next(std::make_move_iterator(rest), std::make_move_iterator(m_blocks[block].end()));
        m_blocks[block].erase(rest, m_blocks[block].end());
        const auto behind = static_cast<std::ptrdiff_t>(block) + 1;
        m_blocks.insert(m_blocks.begin() + behind, std::move(next));
        m_starts.insert(m_starts.begin() + behind, m_starts[block] + static_cast<int>(kept));
        if (index >= m_starts[block + 1])
            ++block;
    }
    m_blocks[block].insert(m_blocks[block].begin() + (index - m_starts[block]), std::move(item));
    shiftBehind(block, 1);
}

void ListItems::erase(int index)
{
    const std::size_t block = blockOf(index);
    m_blocks[block].erase(m_blocks[block].begin() + (index - m_starts[block]));
    shiftBehind(block, -1);
    if (!m_blocks[block].empty() || m_blocks.size() == 1)
        return;
    m_blocks.erase(m_blocks.begin() + static_cast<std::ptrdiff_t>(block));
    m_starts.erase(m_starts.begin() + static_cast<std::ptrdiff_t>(block));
}

void ListItems::clear()
{
    m_blocks.assign(1, {});
    m_starts.assign(2, 0);
}

std::size_t ListItems::blockOf(int index) const
{
    const auto behind = std::upper_bound(m_starts.begin(), m_starts.end() - 1, index);
    return static_cast<std::size_t>(behind - m_starts.begin()) - 1;
}

void ListItems::shiftBehind(std::size_t block, int by)
{
    for (std::size_t next = block + 1; next < m_starts.size(); ++next)
        m_starts[next] += by;
}

} // namespace trovarium
