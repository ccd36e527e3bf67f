#include "inspect/model/HandleUses.h"

#include "inspect/model/Relations.h"

#include <charconv>

namespace Bfri {

namespace {

class Walk {
  public:
    Walk( BfResourceParser const& parser, std::function<void( HandleUse const& )> const& visit )
        : visit_( visit ), relations_( parser ), owners_( parser ) {}

    void of( BfTableInfo const& record ) const {
        visit_( { record.handle, Kind::tables, record.name, "handle", {}, record.name } );
        if( record.adtHandle != 0 || !record.adtName.empty() )
            visit_( { record.adtHandle, Kind::tables, record.name, "adtHandle", {}, record.adtName } );
        if( record.maxSelGroups != 0 )
            visit_( { record.selHandle, Kind::tables, record.name, "selHandle", {}, record.selName } );
    }
    void of( BfResource const& record ) const {
        auto const owner = owners_.of( record );
        visit_( { record.handle, Kind::resources, record.name, "handle", owner.table, record.name,
                  owner.several } );
    }
    void of( BfTableCounterInfo const& record ) const {
        bool const own = record.handle == record.ownHandle;
        auto const owner = ownerOf( record, record.ownHandle );
        visit_( { record.handle, Kind::counters, record.name, "handle", owner.table,
                  own ? record.name : std::string_view(), owner.several } );
        if( !own )
            visit_(
                { record.ownHandle, Kind::counters, record.name, "ownHandle", owner.table, record.name } );
    }
    void of( BfTableMeterInfo const& record ) const {
        ofAttached( Kind::meters, record, ownerOf( record, record.handle ) );
    }
    void of( BfTableWredInfo const& record ) const {
        ofAttached( Kind::wreds, record, owners_.of( record ) );
    }
    void of( BfRegisterInfo const& record ) const {
        ofAttached( Kind::registers, record, owners_.of( record ) );
    }
    void of( BfLearnQuantaInfo const& record ) const {
        visit_( { record.handle, Kind::learnQuantas, record.name, "handle", {}, record.name } );
    }
    void of( BfActionInfo const& record ) const {
        visit_( { record.handle, Kind::actions, record.name, "handle", record.tableName, record.name } );
    }
    void of( String const& name, BfDynamicHashInfo const& record ) const {
        visit_( { record.tableHdl, Kind::hashes, name, "tableHdl", {}, name } );
        visit_( { record.fieldListHdl, Kind::hashes, name, "fieldListHdl", {}, name } );
    }
    /// The handles that a placed table refers to; its own handle is in its resource.
    void of( BfZelResource const& resource ) const {
        ofReferences( resource, "statReferences", resource.statReferences() );
        ofReferences( resource, "meterReferences", resource.meterReferences() );
        ofReferences( resource, "statefulReferences", resource.statefulReferences() );
    }

  private:
    /// A direct record has the handle of its match table; its own handle is in none of its fields.
    template<class Record>
    void ofAttached( Kind kind, Record const& record, Owners::Owner const& owner ) const {
        bool const direct = isDirect( record );
        visit_( { record.handle, kind, record.name, "handle", owner.table,
                  direct ? std::string_view() : record.name, owner.several } );
        if( !direct )
            return;
        BfResourceType const type = kindOf( kind ).attachment->type;
        if( auto const* const place = relations_.placeOf( type, record.handle, record.name ) )
            visit_( { place->handle, kind, record.name, "", owner.table, record.name } );
    }
    template<class Handles>
    void ofReferences( BfZelResource const& resource, char const* field, Handles const& references ) const {
        for( U32 const reference : references )
            visit_( { reference, Kind::handles, resource.name, field, {}, {} } );
    }

    /// Counters and meters name their table, as far as actions tell.
    template<class Record>
    Owners::Owner ownerOf( Record const& record, U32 ownHandle ) const {
        return record.associatedTable.empty() ? owners_.of( ownHandle, record.name )
                                              : Owners::Owner{ record.associatedTable };
    }

    std::function<void( HandleUse const& )> const& visit_;
    Relations const relations_;
    Owners const owners_;
};

} // namespace

void eachHandleUse( BfResourceParser const& parser, std::function<void( HandleUse const& )> const& visit ) {
    Walk const walk( parser, visit );
    auto const all = [ & ]( auto const& records ) {
        for( auto const& record : records )
            walk.of( record );
    };
    all( parser.bfTables() );
    all( parser.bfResources() );
    all( parser.bfCounters() );
    all( parser.bfMeters() );
    all( parser.bfWreds() );
    all( parser.bfRegisterInfos() );
    all( parser.bfLearnQuantaInfos() );
    all( parser.bfActions() );
    for( auto const* const entry : sortedByKey( parser.bfDynamicHashInfo() ) )
        walk.of( entry->first, entry->second );
    for( auto const* const entry : sortedByKey( parser.resourceHandles() ) )
        walk.of( entry->second );
}

namespace {

std::optional<U32> numberIn( std::string_view digits, int base ) {
    char const* const end = digits.data() + digits.size();
    U32 number = 0;
    auto const [ rest, error ] = std::from_chars( digits.data(), end, number, base );
    return error == std::errc() && rest == end ? std::optional( number ) : std::nullopt;
}

} // namespace

std::optional<U32> handleIn( std::string_view word ) {
    bool const hexadecimal = word.starts_with( "0x" ) || word.starts_with( "0X" );
    return hexadecimal ? numberIn( word.substr( 2 ), 16 ) : numberIn( word, 10 );
}

std::optional<U32> handleBehind0x( std::string_view word ) { return numberIn( word, 16 ); }

std::optional<U32> handleWithout0x( BfResourceParser const& parser, std::string_view word ) {
    auto const handle = handleBehind0x( word );
    bool isBorne = false;
    if( handle )
        eachHandleUse( parser, [ & ]( HandleUse const& bearer ) { isBorne |= bearer.handle == handle; } );
    return isBorne ? handle : std::nullopt;
}

} // namespace Bfri
