#include "inspect/model/Records.h"

#include "inspect/model/RecordFields.h"

namespace Bfri {

namespace {

template<class Record>
Row rowOfFields( Record const& record ) {
    constexpr std::size_t room = 3; // for stages, and pipes or a configuration
    return Fields::rowFrom( [ & ]( auto const& field ) { Fields::each( record, field ); }, room );
}

} // namespace

Row rowOf( BfTableInfo const& record ) { return rowOfFields( record ); }
Row rowOf( BfResource const& record ) { return rowOfFields( record ); }
Row rowOf( BfActionInfo const& record ) { return rowOfFields( record ); }

String typeNameOf( BfResource const& record ) {
    for( auto const& [ type, text ] : bfResourceTypeTexts ) {
        if( static_cast<U32>( type ) == record.type )
            return String( text );
    }
    return std::to_string( record.type );
}

List pipesOf( U32 mask ) {
    List pipes;
    for( U32 pipe = 0; pipe < 32; ++pipe ) {
        if( mask >> pipe & 1 )
            pipes.push_back( pipe );
    }
    return pipes;
}

Row pipelineRow( BfResourceInfo::ZelContextFile const& file ) {
    U32 const mask = file.key().value();
    return { { "pipeMask", Hex( mask ) }, { "pipes", pipesOf( mask ) }, { "path", file.value() } };
}

} // namespace Bfri
