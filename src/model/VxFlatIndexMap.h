#pragma once
// A hash map from small keys to small values in one flat array, for the
// indexes of the floor plan graph: a floor of 100,000 walls makes some
// hundred thousand entries per rebuild, and a node per entry (as the
// standard maps allocate) costs more than the whole search it speeds up.
// Entries are never removed; the map is cleared as a whole.

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

// A hash of 64 bits whose low bits depend on all bits of the input: keys
// such as pointers, whose low bits are all zero, spread over the table.
inline size_t VxMixHash(uint64_t value)
{
    value ^= value >> 30;
    value *= 0xbf58476d1ce4e5b9ull;
    value ^= value >> 27;
    value *= 0x94d049bb133111ebull;
    value ^= value >> 31;
    return static_cast<size_t>(value);
}

template <typename Key, typename Value, typename Hash>
class CVxFlatIndexMap
{
public:
    CVxFlatIndexMap() = default;
    // freshValue is the value of a key met for the first time.
    explicit CVxFlatIndexMap(Value freshValue) : m_fresh(freshValue) {}

    void Clear()
    {
        m_slots.clear();
        m_used.clear();
        m_count = 0;
    }

    void Reserve(size_t count)
    {
        size_t capacity = 16;
        while (capacity < 2 * count)
            capacity *= 2;
        if (capacity > m_slots.size())
            Rehash(capacity);
    }

    Value* Find(const Key& key)
    {
        if (m_count == 0)
            return nullptr;
        const size_t mask = m_slots.size() - 1;
        for (size_t at = Hash()(key) & mask;; at = (at + 1) & mask) {
            if (!m_used[at])
                return nullptr;
            if (m_slots[at].first == key)
                return &m_slots[at].second;
        }
    }

    const Value* Find(const Key& key) const { return const_cast<CVxFlatIndexMap*>(this)->Find(key); }

    // The value of key, made from fresh if key is new.
    Value& operator[](const Key& key)
    {
        if (2 * (m_count + 1) > m_slots.size())
            Rehash(m_slots.empty() ? 16 : 2 * m_slots.size());
        const size_t mask = m_slots.size() - 1;
        size_t at = Hash()(key) & mask;
        while (m_used[at]) {
            if (m_slots[at].first == key)
                return m_slots[at].second;
            at = (at + 1) & mask;
        }
        m_used[at] = 1;
        m_slots[at] = {key, m_fresh};
        ++m_count;
        return m_slots[at].second;
    }

private:
    void Rehash(size_t capacity)
    {
        std::vector<std::pair<Key, Value>> table(capacity);
        std::vector<uint8_t> taken(capacity, 0);
        const size_t mask = capacity - 1;
        for (size_t k = 0; k < m_slots.size(); ++k) {
            if (!m_used[k])
                continue;
            size_t at = Hash()(m_slots[k].first) & mask;
            while (taken[at])
                at = (at + 1) & mask;
            taken[at] = 1;
            table[at] = std::move(m_slots[k]);
        }
        m_slots.swap(table);
        m_used.swap(taken);
    }

    std::vector<std::pair<Key, Value>> m_slots;
    std::vector<uint8_t> m_used;
    size_t m_count = 0;
    Value m_fresh{};
};
