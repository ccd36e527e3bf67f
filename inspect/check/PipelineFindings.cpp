#include "inspect/check/CheckContext.h"

#include <bit>

namespace Bfri {

namespace {

U32 maskOf( Ostler::Pipeline const& pipeline ) {
    U32 mask = 0;
    for( U32 const pipe : pipeline.pipeScope )
        mask |= 1U << pipe % 32;
    return mask;
}

/// "pipe 3", "pipes 0 1".
String pipeList( U32 mask ) {
    String text;
    for( U32 pipe = 0; pipe < 32; ++pipe ) {
        if( mask >> pipe & 1 )
            text += " " + std::to_string( pipe );
    }
    return ( std::popcount( mask ) == 1 ? "pipe" : "pipes" ) + text;
}

template<class Step>
void forEachPipeline( CheckContext const& facts, Step step ) {
    for( Ostler::Device const& device : facts.configuration.profile.devices ) {
        for( Ostler::Pipeline const& pipeline : device.pipelines )
            step( pipeline );
    }
}

} // namespace

void findUnreadContextFiles( CheckContext const& facts, Findings& findings ) {
    std::unordered_map<U32, String> read;
    for( auto const& entry : facts.parser.contextFile() )
        read[ entry.key().value() ] = entry.value();
    forEachPipeline( facts, [ & ]( Ostler::Pipeline const& pipeline ) {
        U32 const mask = maskOf( pipeline );
        if( String const& last = read[ mask ]; last != pipeline.contextFile )
            findings.add( "pipeline", pipeline.contextFile, {},
                          "its context file is not read for " +
                              ( mask ? pipeList( mask ) : String( "no pipes" ) ) +
                              ", which a later pipeline with " + quoted( last ) + " has, too" );
    } );
}

void findOverlappingPipes( CheckContext const& facts, Findings& findings ) {
    String const* owners[ 32 ] = {};
    for( auto const& entry : facts.parser.contextFile() ) {
        U32 const mask = entry.key().value();
        U32 shared = 0;
        String const* other = nullptr;
        for( U32 pipe = 0; pipe < 32; ++pipe ) {
            if( !( mask >> pipe & 1 ) )
                continue;
            if( owners[ pipe ] ) {
                shared |= 1U << pipe;
                other = owners[ pipe ];
            }
            owners[ pipe ] = &entry.value();
        }
        if( other )
            findings.add( "pipeline", entry.value(), {},
                          "shares " + pipeList( shared ) + " with " + quoted( *other ) );
    }
}

void findWrappingPipes( CheckContext const& facts, Findings& findings ) {
    forEachPipeline( facts, [ & ]( Ostler::Pipeline const& pipeline ) {
        for( U32 const pipe : pipeline.pipeScope ) {
            if( pipe >= 32 )
                findings.add( "pipeline", pipeline.contextFile, {},
                              "its pipe " + std::to_string( pipe ) + " counts as pipe " +
                                  std::to_string( pipe % 32 ) );
        }
    } );
}

void findPipelinesWithoutPipes( CheckContext const& facts, Findings& findings ) {
    forEachPipeline( facts, [ & ]( Ostler::Pipeline const& pipeline ) {
        if( pipeline.pipeScope.empty() )
            findings.add( "pipeline", pipeline.contextFile, {}, "has no pipes" );
    } );
}

void findLostPipeBits( CheckContext const& facts, Findings& findings ) {
    if( !facts.hasPipeBits() )
        return;
    for( auto const& entry : facts.parser.contextFile() ) {
        U32 const mask = entry.key().value();
        auto const lowest = static_cast<U32>( std::countr_zero( mask ) );
        if( mask != 0 && lowest >= 16 )
            findings.add( "pipeline", entry.value(), {},
                          "its lowest pipe is " + std::to_string( lowest ) + ", its handles carry " +
                              std::to_string( lowest % 16 ) );
    }
}

void findHandlesInPipeBits( CheckContext const& facts, Findings& findings ) {
    if( !facts.hasPipeBits() )
        return;
    auto const examine = [ & ]( char const* what, String const& name, U32 handle ) {
        if( facts.filesWith( handle ) == 0 )
            findings.add( what, name, handle,
                          "carries pipe " + std::to_string( handle >> 28 ) +
                              ", but that is not the lowest pipe of any pipeline" );
    };
    for( BfResource const& record : facts.parser.bfResources() )
        examine( "placed table", record.name, record.handle );
    for( BfActionInfo const& record : facts.parser.bfActions() )
        examine( "action", record.name, record.handle );
}

void findNoContextFile( CheckContext const& facts, Findings& findings ) {
    if( facts.parser.contextFile().empty() )
        findings.add( "switch configuration", facts.configuration.path, {}, "names no context file" );
}

} // namespace Bfri
