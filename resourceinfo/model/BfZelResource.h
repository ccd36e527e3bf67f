#pragma once

#include "resourceinfo/Export.h"
#include "resourceinfo/model/Types.h"
#include "zel/Collections.h"

#include <ostream>

namespace BfResourceInfo {

/// One handle of the context files: what it is the handle of, and which handles that references. The queues
/// hold the handles of referenced statistics, meter and stateful tables, in the order found (operations: see
/// ZEL_QUEUE).
class BFRESOURCEINFO_EXPORT BfZelResource {
  public:
    BfZelResource() = default;
    /// Not supported, fatal: "No String constructor for BfZelResource - has collection" is the message.
    explicit BfZelResource( String const& strep );

    U32 handle = 0;    ///< "handle"; also the key of the entry in its collection
    String name;       ///< "name"
    U32 size = 0;      ///< "size", in entries
    U8 stageStart = 0; ///< "stage_number" of the first stage table, 8 bits of it

    /// True when any field differs from a default-constructed value: a look-up that missed is false.
    explicit operator bool() const { return !isEq( BfZelResource() ); }
    /// Equal fields, and the same elements in the same order in each queue.
    bool isEq( BfZelResource const& other ) const;
    /// Throws Zel::UnhashableType: entries are values, never keys.
    [[noreturn]] U32 hash() const;

    friend bool operator==( BfZelResource const& a, BfZelResource const& b ) { return a.isEq( b ); }

    ZEL_QUEUE( statReferences )
    ZEL_QUEUE( meterReferences )
    ZEL_QUEUE( statefulReferences )
};

/// "Value('BfResourceInfo::BfZelResource', ** {'handle': 5, 'name': 't', ...})"; the queues always show as
/// None.
BFRESOURCEINFO_EXPORT String valueToStrep( BfZelResource const& resource );
BFRESOURCEINFO_EXPORT std::ostream& operator<<( std::ostream& os, BfZelResource const& resource );

} // namespace BfResourceInfo
