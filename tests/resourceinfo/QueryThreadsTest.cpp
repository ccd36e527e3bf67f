#include "tests/resourceinfo/Fixtures.h"

#include <atomic>
#include <gtest/gtest.h>
#include <thread>

namespace BfResourceInfo {
namespace {

/// Atomic counting while it lives.
class AtomicPointers {
  public:
    AtomicPointers() { Zel::pointerModeIs( Zel::PointerMode::atomic ); }
    ~AtomicPointers() { Zel::pointerModeIs( Zel::PointerMode::plain ); }
};

constexpr U32 tables = 50;
constexpr int threads = 4;
constexpr int rounds = 2000;

BfTableInfo table( U32 i ) {
    BfTableInfo result;
    result.name = "table." + std::to_string( i );
    result.handle = 100 + i;
    result.size = i;
    return result;
}

/// A model with one record of every kind for each number.
void fill( BfResourceParser& parser ) {
    for( U32 i = 0; i < tables; ++i ) {
        String const name = "table." + std::to_string( i );
        parser.bfTablesPush( table( i ) );
        parser.bfResourcesPush( { name, 100 + i, 1, i, true, 1, i } );
        parser.bfCountersPush( { name, i, i, i, true, true, true, "of counter", "a" } );
        parser.bfMetersPush( { name, i, true, true, true, "of " + name, "a" } );
        parser.bfWredsPush( { name, i, true, "a" } );
        parser.bfRegisterInfosPush( { name, i, true, "uint8_t", 8, false } );
        parser.bfLearnQuantaInfosPush( { name, i } );
        parser.bfActionsPush( { i, name, "table" } );
        parser.bfHeadersIs( name, BfHeaderInfo( static_cast<U16>( i ) ) );
        parser.bfDynamicHashInfoIs( name, { i, i, 2, { "field", name } } );
    }
}

/// True when every query answers what was stored for number i.
bool answersRight( BfResourceInfoIntf& info, U32 i ) {
    String const name = "table." + std::to_string( i );
    return info.bfTablesNum() == tables && info.bfTableIndex( name ) == i && info.bfTableName( i ) == name &&
           info.bfTable( i ).size == i && info.bfTableField( name, tableSize ) == i &&
           info.bfTableString( name, tableAdtName ).empty() && info.bfTableByHandle( 100 + i ).name == name &&
           info.bfResourceIndex( name ) == i && info.bfResourceField( name, resourceSize ) == i &&
           info.bfResourceStageStart( name ) == static_cast<int>( i ) &&
           info.bfResourceByHandle( 100 + i ).name == name && info.bfResource( i ).name == name &&
           info.bfTableIndex( "absent" ) == BfResourceInfoIndexInvalid &&
           info.bfTableCounterIndex( name ) == i && info.bfTableCounter( i ).name == name &&
           info.bfTableCounterField( name, counterSize ) == i && info.bfTableMeterIndex( name ) == i &&
           info.bfTableMeter( i ).name == name && info.bfTableMeterField( name, meterHandle ) == i &&
           info.bfAssociatedTable( name ) == "of " + name && info.bfTableWredIndex( name ) == i &&
           info.bfTableWred( i ).name == name && info.bfTableWredField( name, wredHandle ) == i &&
           info.bfRegisterIndex( name ) == i && info.bfRegister( i ).name == name &&
           info.bfLearnQuantaIndex( name ) == i && info.bfLearnQuanta( i ).name == name &&
           info.bfActionIndex( name ) == i && info.bfAction( i ).name == name &&
           info.bfHeaderSize( name ) == i && info.bfDynHashTableHdl( name ) == i &&
           info.bfDynHashFieldListHdl( name ) == i && info.bfDynHashFieldCount( name ) == 2 &&
           info.bfDynHashFieldId( name, name ) == 1;
}

TEST( QueryThreads, ThreadsAskOneInterfaceAtOnce ) {
    AtomicPointers const scope;
    auto const info = emptyInterface();
    auto const parser = info->parser();
    fill( *parser );
    U32 const before = parser->references();
    std::atomic<int> wrong = 0;
    std::vector<std::thread> askers;
    for( int t = 0; t < threads; ++t )
        askers.emplace_back( [ &, t ] {
            for( int round = 0; round < rounds; ++round )
                wrong += !answersRight( *info, static_cast<U32>( round + t ) % tables );
        } );
    for( std::thread& asker : askers )
        asker.join();
    EXPECT_EQ( wrong, 0 );
    EXPECT_EQ( parser->references(), before );
}

TEST( QueryThreads, ThreadsHoldAndReleaseTheModelAtOnce ) {
    AtomicPointers const scope;
    auto const before = liveAllocations();
    auto info = emptyInterface();
    info->parser()->bfTablesPush( table( 7 ) );
    std::atomic<int> wrong = 0;
    std::vector<std::thread> holders;
    for( int t = 0; t < threads; ++t )
        holders.emplace_back( [ &wrong, held = info->parser() ]() mutable {
            for( int round = 0; round < rounds; ++round ) {
                auto const copy = held;
                wrong += copy->bfTables().at( 0 ).size != 7;
            }
            held = nullptr;
        } );
    info = nullptr; // the last thread to let go destroys the model
    for( std::thread& holder : holders )
        holder.join();
    holders.clear();
    EXPECT_EQ( wrong, 0 );
    EXPECT_EQ( liveAllocations(), before );
}

} // namespace
} // namespace BfResourceInfo
