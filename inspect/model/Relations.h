#pragma once

// What belongs to what, by the model's own relations: the handles that placed tables reference, and the
// parents of resources by name.

#include "inspect/model/Kinds.h"
#include "inspect/model/Records.h"

#include <span>
#include <string_view>
#include <unordered_map>

namespace Bfri {

/// A kind of record that belongs to tables.
struct Attachment {
    Kind kind;
    BfResourceType type;
    Vessa::Queue<U32> const& ( BfZelResource::*references )() const; ///< where tables list its handle
};

inline constexpr Attachment allAttachments[] = {
    { Kind::counters, BfResourceType::statistics, &BfZelResource::statReferences },
    { Kind::meters, BfResourceType::meter, &BfZelResource::meterReferences },
    { Kind::wreds, BfResourceType::wred, &BfZelResource::meterReferences },
    { Kind::registers, BfResourceType::stateful, &BfZelResource::statefulReferences },
};

/// Counters, meters, WRED tables and registers.
inline std::span<Attachment const> attachments() { return allAttachments; }

/// Follows the relations of one model, which must outlive this object.
class Relations {
  public:
    explicit Relations( BfResourceInfo::BfResourceParser const& parser ) : parser_( parser ) {}

    /// Whether a counter, meter, WRED table or register belongs to a placed table: it is direct and has the
    /// table's handle, or the table references it, or the table is its parent by name.
    bool belongs( Attachment const& attachment, Row const& record, BfZelResource const& table ) const;

    /// Whether a match table takes its action data or its selection from a resource.
    static bool uses( BfTableInfo const& table, BfResource const& resource ) {
        return ( table.adtHandle == resource.handle && table.adtName == resource.name ) ||
               ( table.selHandle == resource.handle && table.selName == resource.name );
    }

    /// The resource of a record with that handle and name; null if it is not placed.
    BfResource const* placeOf( U32 handle, String const& name ) const;

    /// Whether two handles may be from one context file. Without a run-time configuration, any two may.
    bool sameFile( U32 handle, U32 other ) const {
        return parser_.bfrtConfig().empty() || handle >> 28 == other >> 28;
    }

  private:
    BfResourceInfo::BfResourceParser const& parser_;
};

/// The tables that the placed resources of a model belong to. The model must outlive this object.
/// Construction is linear in the model.
class Owners {
  public:
    explicit Owners( BfResourceInfo::BfResourceParser const& parser );

    /// The only table, or that there are several; neither if the model knows none.
    struct Owner {
        std::string_view table = {};
        bool several = false;
    };
    /// Among the tables that use or reference the resource, else among those whose actions name it.
    Owner of( U32 handle, String const& name ) const;

  private:
    struct Resource {
        std::string_view name;
        Owner owner;
    };
    void add( U32 handle, std::string_view name, std::string_view table );

    BfResourceInfo::BfResourceParser const& parser_;
    std::unordered_map<U32, std::vector<Resource>> used_; // by handle
};

} // namespace Bfri
