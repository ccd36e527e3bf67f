#include "cli/Bearers.h"

#include "cli/Records.h"

namespace Bfri {

namespace {

using BfResourceInfo::BfResourceParser;
using BfResourceInfo::BfZelResource;

class Walk {
  public:
    Walk( BfResourceParser const& parser, std::function<void( Bearer const& )> const& visit )
        : parser_( parser ), visit_( visit ) {}

    void of( BfTableInfo const& record ) const {
        visit_( { record.handle, "table", record.name, "handle", {}, record.name } );
        if( record.adtHandle != 0 || !record.adtName.empty() )
            visit_( { record.adtHandle, "table", record.name, "adtHandle", {}, record.adtName } );
        if( record.maxSelGroups != 0 )
            visit_( { record.selHandle, "table", record.name, "selHandle", {}, record.selName } );
    }
    void of( BfResource const& record ) const {
        auto const parent = parentOf( record.name );
        visit_( { record.handle, "resource", record.name, "handle",
                  parent.empty() ? referrerOf( record.handle ) : parent, record.name,
                  hasSeveral( record.name ) } );
    }
    void of( BfTableCounterInfo const& record ) const {
        bool const own = record.handle == record.ownHandle;
        visit_( { record.handle, "counter", record.name, "handle", record.associatedTable,
                  own ? record.name : std::string_view(), hasSeveral( record.name ) } );
        if( !own )
            visit_( { record.ownHandle, "counter", record.name, "ownHandle", record.associatedTable,
                      record.name } );
    }
    void of( BfTableMeterInfo const& record ) const {
        visit_( { record.handle, "meter", record.name, "handle", record.associatedTable,
                  record.direct ? std::string_view() : record.name, hasSeveral( record.name ) } );
    }
    void of( BfTableWredInfo const& record ) const { ofAttached( "wred", record, record.direct ); }
    void of( BfRegisterInfo const& record ) const { ofAttached( "register", record, !record.indirect ); }
    void of( BfLearnQuantaInfo const& record ) const {
        visit_( { record.handle, "learn-quanta", record.name, "handle", {}, record.name } );
    }
    void of( BfActionInfo const& record ) const {
        visit_( { record.handle, "action", record.name, "handle", record.tableName, record.name } );
    }
    void of( String const& name, BfDynamicHashInfo const& record ) const {
        visit_( { record.tableHdl, "hash", name, "tableHdl", {}, name } );
        visit_( { record.fieldListHdl, "hash", name, "fieldListHdl", {}, name } );
    }
    /// What a placed table refers to; the handle itself is its resource's.
    void of( BfZelResource const& resource ) const {
        ofReferences( resource, "statReferences", resource.statReferences() );
        ofReferences( resource, "meterReferences", resource.meterReferences() );
        ofReferences( resource, "statefulReferences", resource.statefulReferences() );
    }

  private:
    /// Records that do not name their table: a direct one bears the handle of its match table.
    template<class Record>
    void ofAttached( char const* kind, Record const& record, bool direct ) const {
        visit_( { record.handle, kind, record.name, "handle",
                  direct ? placedAt( record.handle ) : parentOf( record.name ),
                  direct ? std::string_view() : record.name, !direct && hasSeveral( record.name ) } );
    }
    template<class Handles>
    void ofReferences( BfZelResource const& resource, char const* field, Handles const& references ) const {
        for( U32 const reference : references )
            visit_( { reference, "handle", resource.name, field, {}, {} } );
    }

    std::string_view parentOf( String const& name ) const {
        String const* const parent = parser_.parentTable().find( name );
        return parent ? *parent : std::string_view();
    }
    bool hasSeveral( String const& name ) const { return parser_.multipleParentTablesHas( name ); }
    std::string_view placedAt( U32 handle ) const {
        BfZelResource const* const resource = parser_.resourceHandles().find( handle );
        return resource ? resource->name : std::string_view();
    }
    std::string_view referrerOf( U32 handle ) const {
        for( char const* const kind : { "statistics_table_refs", "meter_table_refs", "stateful_table_refs" } )
            if( auto const referrer = parser_.resourceHandles().referrer( kind, handle ) )
                return placedAt( *referrer );
        return {};
    }

    BfResourceParser const& parser_;
    std::function<void( Bearer const& )> const& visit_;
};

} // namespace

void eachBearer( BfResourceParser const& parser, std::function<void( Bearer const& )> const& visit ) {
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

} // namespace Bfri
