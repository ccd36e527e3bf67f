#pragma once

// What belongs to what, by the model's own relations: the handles that placed tables reference, and the
// parents of resources by name.

#include "inspect/model/RecordKinds.h"

#include <unordered_map>

namespace Bfri {

/// Whether a record belongs to one table, whose handle it has. Registers say the contrary; places say
/// nothing.
template<class Record>
bool isDirect( Record const& record ) {
    return record.direct;
}
inline bool isDirect( BfRegisterInfo const& record ) { return !record.indirect; }
inline bool isDirect( BfResource const& ) { return false; }
inline bool isDirect( BfZelResource const& ) { return false; }

/// Follows the relations of one model, which must outlive this object.
class Relations {
  public:
    explicit Relations( BfResourceParser const& parser ) : parser_( parser ) {}

    /// Whether a counter, meter, WRED table or register belongs to a placed table: it is direct and has the
    /// table's handle, or the table references it, or the table is its parent by name.
    bool belongs( Attachment const& attachment, Row const& record, BfZelResource const& table ) const;

    /// Whether a match table takes its action data or its selection from a resource.
    static bool uses( BfTableInfo const& table, BfResource const& resource ) {
        return ( table.adtHandle == resource.handle && table.adtName == resource.name ) ||
               ( table.selHandle == resource.handle && table.selName == resource.name );
    }

    /// The resource of a record with that handle and name; null if it is not placed.
    BfResource const* placeOf( U32 handle, String const& name ) const {
        return firstNamed( parser_.bfResources(), name,
                           [ & ]( BfResource const& resource ) { return resource.handle == handle; } );
    }
    /// The resource of a record that may be direct: the one with its name and type, in its context file.
    BfResource const* placeOf( BfResourceType type, U32 handle, String const& name ) const {
        return firstNamed( parser_.bfResources(), name, [ & ]( BfResource const& resource ) {
            return resource.type == static_cast<U32>( type ) && sameFile( resource.handle, handle );
        } );
    }
    /// The first record of a name in the file that a handle is of.
    template<class Record>
    Record const* firstInFile( BfResourceInfo::RecordSequence<Record> const& all, U32 handleInFile,
                               String const& name ) const {
        return firstNamed(
            all, name, [ & ]( Record const& record ) { return sameFile( record.handle, handleInFile ); } );
    }

    /// Whether two handles may be from one context file. Without a run-time configuration, any two may.
    bool sameFile( U32 handle, U32 other ) const {
        return parser_.bfrtConfig().empty() || handle >> 28 == other >> 28;
    }

  private:
    template<class Record, class Rule>
    static Record const* firstNamed( BfResourceInfo::RecordSequence<Record> const& all, String const& name,
                                     Rule const& rule ) {
        for( U32 i = all.template first<BfByName<Record>>( name ); i < all.size(); ++i ) {
            if( all.at( i ).name == name && rule( all.at( i ) ) )
                return &all.at( i );
        }
        return nullptr;
    }

    BfResourceParser const& parser_;
};

/// The tables that the placed resources of a model belong to. The model must outlive this object.
/// Construction is linear in the model.
class Owners {
  public:
    explicit Owners( BfResourceParser const& parser );

    /// The only table, or that there are several; neither if the model knows none.
    struct Owner {
        std::string_view table = {};
        bool several = false;
    };
    /// Among the tables that use or reference the resource, else among those whose actions name it. A direct
    /// record has its table's handle.
    Owner of( U32 handle, String const& name, bool direct = false ) const;
    template<class Record>
    Owner of( Record const& record ) const {
        return of( record.handle, record.name, isDirect( record ) );
    }

  private:
    struct Resource {
        std::string_view name;
        Owner owner;
    };
    void add( U32 handle, std::string_view name, std::string_view table );

    BfResourceParser const& parser_;
    std::unordered_map<U32, std::vector<Resource>> used_; // by handle
};

} // namespace Bfri
