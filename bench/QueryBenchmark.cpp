// Queries by name, handle and index for models of 10 to 1,000,000 tables, and a scan for comparison. Every
// answer is checked before anything is timed. The names come in random order, so that large models show what
// the memory of the machine costs.

#include "resourceinfo/BfResourceInfoIntf.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <map>
#include <random>

namespace {

using BfResourceInfo::BfResourceInfoIntf;
using Model = Zel::Ptr<BfResourceInfoIntf>;

String nameOf( U32 table ) {
    return "pipe.SwitchIngress.block" + std::to_string( table % 17 ) + ".table_" + std::to_string( table );
}

/// An interface without a configuration whose model is filled with tables of a P4 program's kind of names.
Model const& modelOf( U32 tables ) {
    static std::map<U32, Model> models;
    Model& model = models[ tables ];
    if( model )
        return model;
    model = BfResourceInfo::bfResourceInfoIntfFactory( "" );
    for( U32 i = 0; i < tables; ++i ) {
        BfTableInfo table;
        table.name = nameOf( i );
        table.handle = 0x01000000 + i;
        table.size = i ^ 0x5555;
        model->parser()->bfTablesPush( std::move( table ) );
    }
    return model;
}

/// Table numbers in random order, with their names: as many as make a long enough round of the large models.
struct Asked {
    U32 table;
    String name;
};
std::vector<Asked> askedOf( U32 tables ) {
    std::mt19937 random( 1 );
    std::vector<U32> numbers( tables );
    std::generate( numbers.begin(), numbers.end(), [ n = 0U ]() mutable { return n++; } );
    std::shuffle( numbers.begin(), numbers.end(), random );
    numbers.resize( std::min<std::size_t>( numbers.size(), 100'000 ) );
    std::vector<Asked> asked;
    for( U32 const number : numbers )
        asked.push_back( { number, nameOf( number ) } );
    return asked;
}

void require( bool holds, String const& name ) {
    if( holds )
        return;
    std::cerr << "wrong answer for " << name << '\n';
    std::abort();
}

/// Times `query( model, asked )`, whose answer `expected( table )` says.
template<class Query, class Expected>
void ask( benchmark::State& state, Query query, Expected expected ) {
    auto const tables = static_cast<U32>( state.range( 0 ) );
    Model const& model = modelOf( tables );
    auto const asked = askedOf( tables );
    for( Asked const& one : asked )
        require( query( *model, one ) == expected( one.table ), one.name );
    std::size_t i = 0;
    for( auto _ : state ) {
        benchmark::DoNotOptimize( query( *model, asked[ i ] ) );
        i = i + 1 < asked.size() ? i + 1 : 0;
    }
}

U32 scan( BfResourceInfoIntf const& model, Asked const& asked ) {
    U32 index = 0;
    for( BfTableInfo const& table : model.parser()->bfTables() ) {
        if( table.name == asked.name )
            return index;
        ++index;
    }
    return BfResourceInfo::BfResourceInfoIndexInvalid;
}

auto constexpr itself = []( U32 table ) { return table; };

void bfTableIndex( benchmark::State& state ) {
    auto const query = []( auto& model, Asked const& asked ) { return model.bfTableIndex( asked.name ); };
    ask( state, query, itself );
}
void bfTableField( benchmark::State& state ) {
    auto const query = []( auto& model, Asked const& asked ) {
        return model.bfTableField( asked.name, BfResourceInfo::tableSize );
    };
    ask( state, query, []( U32 table ) { return table ^ 0x5555; } );
}
void bfTable( benchmark::State& state ) {
    auto const query = []( auto& model, Asked const& asked ) { return model.bfTable( asked.table ).handle; };
    ask( state, query, []( U32 table ) { return 0x01000000 + table; } );
}
void bfTableByHandle( benchmark::State& state ) {
    auto const query = []( auto& model, Asked const& asked ) {
        return model.bfTableByHandle( 0x01000000 + asked.table ).size;
    };
    ask( state, query, []( U32 table ) { return table ^ 0x5555; } );
}
void scanByName( benchmark::State& state ) { ask( state, scan, itself ); }

BENCHMARK( bfTableIndex )->RangeMultiplier( 10 )->Range( 10, 1'000'000 );
BENCHMARK( bfTableField )->RangeMultiplier( 10 )->Range( 10, 1'000'000 );
BENCHMARK( bfTable )->RangeMultiplier( 10 )->Range( 10, 1'000'000 );
BENCHMARK( bfTableByHandle )->RangeMultiplier( 10 )->Range( 10, 1'000'000 );
BENCHMARK( scanByName )->RangeMultiplier( 10 )->Range( 10, 10'000 );

} // namespace

BENCHMARK_MAIN();
