#pragma once

#include "mirrow/Slab.h"

#include <cstddef>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace Zel {

/// Hash map without a defined order. Thread-compatible. Operations take constant time on average.
template<class Key, class Value>
class HashMap {
    using Entry = std::pair<Key const, Value>;
    using Table =
        std::unordered_map<Key, Value, std::hash<Key>, std::equal_to<Key>, Mirrow::Allocator<Entry>>;

  public:
    using const_iterator = typename Table::const_iterator;

    std::size_t size() const { return table_.size(); }
    bool empty() const { return table_.empty(); }
    const_iterator begin() const { return table_.begin(); }
    const_iterator end() const { return table_.end(); }

    /// The key's value, null for a missing key; valid until that entry is removed.
    Value const* find( Key const& key ) const {
        auto const found = table_.find( key );
        return found == table_.end() ? nullptr : &found->second;
    }
    bool has( Key const& key ) const { return find( key ) != nullptr; }
    /// A copy of the key's value, Value() for a missing key.
    Value value( Key const& key ) const {
        Value const* const found = find( key );
        return found ? *found : Value();
    }

    /// Inserts, or replaces the value of a present key.
    void is( Key const& key, Value value ) { table_.insert_or_assign( key, std::move( value ) ); }
    /// Removes a key and returns its value; a missing key changes nothing and answers Value().
    Value del( Key const& key ) {
        auto node = table_.extract( key );
        return node ? std::move( node.mapped() ) : Value();
    }
    void delAll() { table_.clear(); }

  private:
    Table table_;
};

/// Hash set without a defined order. Thread-compatible. Operations take constant time on average.
template<class Key>
class HashSet {
    using Table = std::unordered_set<Key, std::hash<Key>, std::equal_to<Key>, Mirrow::Allocator<Key>>;

  public:
    using const_iterator = typename Table::const_iterator;

    std::size_t size() const { return table_.size(); }
    bool empty() const { return table_.empty(); }
    const_iterator begin() const { return table_.begin(); }
    const_iterator end() const { return table_.end(); }
    bool has( Key const& key ) const { return table_.contains( key ); }

    /// Inserts; a present key changes nothing.
    void is( Key const& key ) { table_.insert( key ); }
    /// Removes a key and returns it; a missing key changes nothing and answers Key().
    Key del( Key const& key ) {
        auto node = table_.extract( key );
        return node ? std::move( node.value() ) : Key();
    }
    void delAll() { table_.clear(); }

  private:
    Table table_;
};

} // namespace Zel
