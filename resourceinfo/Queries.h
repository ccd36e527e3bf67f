#pragma once

// What the query files of the interface share.

#include "resourceinfo/BfResourceInfoIntf.h"
#include "zel/Assert.h"

/// The source name in assertions.
#define ZEL_SOURCE "BfResourceInfoIntf"

namespace BfResourceInfo {

/// The parser, which a query holds until it is done.
inline Zel::Ptr<BfResourceParser> BfResourceInfoIntf::queried( Zel::SourceLocation query ) const {
    if( !parser_ )
        Zel::AssertionSite{ ZEL_SOURCE, query.line(), query.function_name(), "parser" }.fail(
            "query without a parser" );
    return parser_;
}

/// Index of the first record of a name, else BfResourceInfoIndexInvalid.
template<class Record>
U32 indexOf( RecordSequence<Record> const& records, String const& name ) {
    U32 const index = records.template first<BfByName<Record>>( name.c_str() );
    return index < records.size() ? index : BfResourceInfoIndexInvalid;
}

/// The first record of a handle, null when there is none; valid as long as the parser that holds the
/// sequence.
template<class Record>
Record const* recordByHandle( RecordSequence<Record> const& records, U32 handle ) {
    U32 const index = records.template first<BfByHandle<Record>>( handle );
    return index < records.size() ? &records.at( index ) : nullptr;
}

/// A query of the interface, `bfTablesNum()` say, for a condition in another one, which has the parser
/// already.
template<class Record>
auto sizeOf( RecordSequence<Record> const& records ) {
    return [ &records ] { return records.size(); };
}

} // namespace BfResourceInfo
