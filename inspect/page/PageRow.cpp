#include "inspect/page/Page.h"

#include <iterator>

namespace Bfri {

namespace {

List listOfRows( std::vector<Row> rows ) {
    return { std::move_iterator( rows.begin() ), std::move_iterator( rows.end() ) };
}

/// Every field of the record, and its parts after them.
Row entryRow( Entry entry ) {
    Row row = std::move( entry.record );
    if( entry.placeable )
        row.push_back( { "placed", entry.place != nullptr } );
    for( Part& part : entry.parts )
        row.push_back( { kindOf( part.kind ).many, listOfRows( std::move( part.rows ) ) } );
    if( !entry.omitted.empty() )
        row.push_back( { "omitted", valuesOf( entry.omitted ) } );
    return row;
}

/// The records of a kind are together, whatever their names.
struct Records {
    List entries = {};
    std::size_t more = 0;
};

Records recordsOf( RecordKind const& kind, std::vector<Page>& pages ) {
    Records records;
    for( Page& page : pages ) {
        for( Section& section : page.sections ) {
            if( section.kind != &kind )
                continue;
            for( Entry& entry : section.entries )
                records.entries.emplace_back( entryRow( std::move( entry ) ) );
            records.more += section.moreRecords;
        }
    }
    return records;
}

} // namespace

Row rowOf( std::vector<Page> pages ) {
    Row row{ { "name", pages.size() == 1 ? Value( pages.front().name ) : Value() } };
    Row more;
    for( RecordKind const& kind : recordKinds() ) {
        Records records = recordsOf( kind, pages );
        if( !records.entries.empty() )
            row.push_back( { kind.member, std::move( records.entries ) } );
        if( records.more > 0 )
            more.push_back( { kind.member, static_cast<U32>( records.more ) } );
    }
    if( !more.empty() )
        row.push_back( { "moreRecords", std::move( more ) } );
    return row;
}

} // namespace Bfri
