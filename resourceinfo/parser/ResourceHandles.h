#pragma once

#include "resourceinfo/Export.h"
#include "resourceinfo/model/BfZelResource.h"
#include "zel/HashMap.h"

#include <array>
#include <functional>
#include <optional>
#include <set>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace BfResourceInfo {

/// The placed tables by handle, found by what they reference, too. The operations of Zel::HashMap; changes
/// take time in proportion to the references of the entries concerned. Thread-compatible.
class BFRESOURCEINFO_EXPORT ResourceHandles {
    using Map = Zel::HashMap<U32, BfZelResource>;

  public:
    using const_iterator = Map::const_iterator;

    std::size_t size() const { return resources_.size(); }
    bool empty() const { return resources_.empty(); }
    const_iterator begin() const { return resources_.begin(); }
    const_iterator end() const { return resources_.end(); }

    /// The handle's entry, null for a missing one; valid until that entry is removed.
    BfZelResource const* find( U32 handle ) const { return resources_.find( handle ); }
    bool has( U32 handle ) const { return resources_.has( handle ); }
    /// A copy of the handle's entry, BfZelResource() for a missing one.
    BfZelResource value( U32 handle ) const { return resources_.value( handle ); }

    /// The lowest handle whose entry lists `reference` in its queue of that kind ("statistics_table_refs",
    /// "meter_table_refs" or "stateful_table_refs"); none when no entry does, or for another kind. Constant
    /// time on average.
    std::optional<U32> referrer( std::string_view referenceKind, U32 reference ) const;

    /// Inserts, or replaces the entry of a present handle, references included.
    void is( U32 handle, BfZelResource resource );
    /// Removes an entry and returns it; a missing handle changes nothing and answers BfZelResource().
    BfZelResource del( U32 handle );
    void delAll();

  private:
    using Handles = std::set<U32, std::less<>, Mirrow::Allocator<U32, BfZelResource>>;
    /// From a referenced handle to those whose entries list it.
    using Referrers = std::unordered_map<U32, Handles, std::hash<U32>, std::equal_to<>,
                                         Mirrow::Allocator<std::pair<U32 const, Handles>, BfZelResource>>;

    BFRESOURCEINFO_LOCAL void addReferences( U32 handle, BfZelResource const& resource );
    BFRESOURCEINFO_LOCAL void removeReferences( U32 handle );

    Map resources_;
    std::array<Referrers, 3> referrers_; // by kind of reference
};

} // namespace BfResourceInfo
