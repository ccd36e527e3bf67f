#include "inspect/check/CheckContext.h"

#include <algorithm>

namespace Bfri {

using BfResourceInfo::BfZelResource;

ReferenceKind const referenceKinds[ 3 ] = {
    { "statistics_table_refs",
      &BfZelResource::statReferences,
      { BfResourceType::statistics, BfResourceType::statistics } },
    { "meter_table_refs", &BfZelResource::meterReferences, { BfResourceType::meter, BfResourceType::wred } },
    { "stateful_table_refs",
      &BfZelResource::statefulReferences,
      { BfResourceType::stateful, BfResourceType::stateful } },
};

namespace {

std::vector<Attached> attachedOf( BfResourceInfo::BfResourceParser const& parser ) {
    std::vector<Attached> all;
    for( auto const& r : parser.bfCounters() )
        all.push_back( { "counter", &r.name, r.handle, r.direct, r.ownHandle, 0 } );
    for( auto const& r : parser.bfMeters() )
        all.push_back( { "meter", &r.name, r.handle, r.direct, r.direct ? 0 : r.handle, 1 } );
    for( auto const& r : parser.bfWreds() )
        all.push_back( { "WRED table", &r.name, r.handle, r.direct, r.direct ? 0 : r.handle, 1 } );
    for( auto const& r : parser.bfRegisterInfos() )
        all.push_back( { "register", &r.name, r.handle, !r.indirect, r.indirect ? r.handle : 0, 2 } );
    return all;
}

} // namespace

CheckContext::CheckContext( Configuration const& loaded )
    : configuration( loaded ), parser( loaded.parser() ), attached( attachedOf( parser ) ) {
    for( BfResource const& resource : parser.bfResources() ) {
        placed.emplace( resource.handle, &resource );
        placedNames.insert( resource.name );
    }
    for( auto const& [ handle, resource ] : parser.resourceHandles() ) {
        for( ReferenceKind const& kind : referenceKinds ) {
            for( U32 const reference : ( resource.*kind.queue )() )
                referrers[ reference ].push_back( handle );
        }
    }
    for( auto& [ handle, tables ] : referrers ) {
        std::ranges::sort( tables );
        tables.erase( std::unique( tables.begin(), tables.end() ), tables.end() );
    }
    for( Context::FileSurvey const& file : configuration.files ) {
        files_[ file.handlePipeBits >> 28 ].push_back( file.path );
        for( Context::SurveyedTable const& table : file.tables ) {
            if( table.handle && parser.resourceHandlesHas( *table.handle ) )
                continue;
            for( Context::SurveyedReference const& reference : table.references )
                unplacedReferrers[ reference.handle ].push_back( table.name );
        }
    }
}

char const* recordOf( Context::SurveyedTable const& table ) {
    return table.type == "match"        ? "match table"
           : table.type == "statistics" ? "counter"
           : table.type == "meter"      ? "meter"
           : table.type == "stateful"   ? "register"
                                        : "table";
}

std::size_t CheckContext::filesWith( U32 handle ) const {
    auto const found = files_.find( pipeBits( handle ) );
    return found == files_.end() ? 0 : found->second.size();
}

String CheckContext::contextFileOf( std::optional<U32> handle ) const {
    bool const tells = handle && hasPipeBits();
    if( !tells && files_.size() != 1 )
        return {};
    auto const found = tells ? files_.find( pipeBits( *handle ) ) : files_.begin();
    return found != files_.end() && found->second.size() == 1 ? found->second.front() : String();
}

} // namespace Bfri
