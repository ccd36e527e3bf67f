#pragma once

// Which records a handle stands for.

#include "inspect/model/RecordKinds.h"

#include <map>
#include <set>
#include <unordered_map>

namespace Bfri {

/// A handle with the names of all that have it as their own, those of actions with their table's.
struct SharedHandle {
    U32 handle;
    std::set<String> names;
};

/// What has which handle as its own in one model, of all kinds or only one; those of handles are of all.
class HandleOwners {
  public:
    HandleOwners( BfResourceInfo::BfResourceParser const& parser, RecordKind const* only );

    std::set<String> const& namesOf( U32 handle ) const;
    /// The handles that stand for more than they did in an older model, or for what stood under several.
    std::vector<SharedHandle> sharedSince( HandleOwners const& old ) const;

    /// Whether a handle stands for what another one stood for in an older model: for as many, and for all of
    /// those that are still there.
    bool takesOver( U32 handle, HandleOwners const& old, U32 oldHandle ) const;

  private:
    bool areTogether( std::set<String> const& names ) const;

    std::map<U32, std::set<String>> names_;
    std::unordered_map<String, std::set<U32>> handles_;
};

} // namespace Bfri
