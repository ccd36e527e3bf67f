// Look-ups by name and handle, through the indexes and as a naive scan side by side, for models of several
// sizes. Every answer is checked against the scan before anything is timed.

#include "resourceinfo/BfResourceInfoIntf.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <iostream>
#include <random>

namespace {

using BfResourceInfo::BfResourceInfoIntf;

/// An interface without a configuration whose model is filled with tables of a P4 program's kind of names.
Zel::Ptr<BfResourceInfoIntf> interfaceWith( U32 tables ) {
    auto interface = BfResourceInfo::bfResourceInfoIntfFactory( "" );
    for( U32 i = 0; i < tables; ++i ) {
        BfTableInfo table;
        table.name = "pipe.SwitchIngress.block" + std::to_string( i % 17 ) + ".table_" + std::to_string( i );
        table.handle = 0x01000000 + i;
        interface->parser()->bfTablesPush( table );
    }
    return interface;
}

U32 scanByName( BfResourceInfoIntf const& interface, String const& name ) {
    U32 index = 0;
    for( BfTableInfo const& table : interface.parser()->bfTables() ) {
        if( table.name == name )
            return index;
        ++index;
    }
    return BfResourceInfo::BfResourceInfoIndexInvalid;
}

std::vector<String> shuffledNames( BfResourceInfoIntf const& interface ) {
    std::vector<String> names;
    for( BfTableInfo const& table : interface.parser()->bfTables() )
        names.push_back( table.name );
    std::shuffle( names.begin(), names.end(), std::mt19937( 1 ) );
    return names;
}

template<class Find>
void lookUp( benchmark::State& state, Find find ) {
    auto const interface = interfaceWith( static_cast<U32>( state.range( 0 ) ) );
    auto const names = shuffledNames( *interface );
    for( String const& name : names ) {
        if( find( *interface, name ) != scanByName( *interface, name ) ) {
            std::cerr << "wrong index for " << name << '\n';
            std::abort();
        }
    }
    std::size_t i = 0;
    for( auto _ : state ) {
        benchmark::DoNotOptimize( find( *interface, names[ i ] ) );
        i = i + 1 < names.size() ? i + 1 : 0;
    }
}

void indexByName( benchmark::State& state ) {
    lookUp( state, []( BfResourceInfoIntf const& interface, String const& name ) {
        return interface.bfTableIndex( name );
    } );
}

void indexByScan( benchmark::State& state ) { lookUp( state, scanByName ); }

BENCHMARK( indexByName )->Arg( 50 )->Arg( 500 )->Arg( 5000 );
BENCHMARK( indexByScan )->Arg( 50 )->Arg( 500 )->Arg( 5000 );

} // namespace

BENCHMARK_MAIN();
