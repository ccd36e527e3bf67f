// Queries that answer numbers allocate nothing: every allocation of this program is counted.

#include "resourceinfo/BfResourceInfoIntf.h"

#include <atomic>
#include <cstdlib>
#include <new>

#include <gtest/gtest.h>

namespace {

std::atomic<std::size_t> allocations;

void* counted( std::size_t bytes ) {
    ++allocations;
    if( void* const block = std::malloc( bytes ) )
        return block;
    throw std::bad_alloc();
}

} // namespace

void* operator new( std::size_t bytes ) { return counted( bytes ); }
void* operator new[]( std::size_t bytes ) { return counted( bytes ); }
void operator delete( void* block ) noexcept { std::free( block ); }
void operator delete( void* block, std::size_t ) noexcept { std::free( block ); }
void operator delete[]( void* block ) noexcept { std::free( block ); }
void operator delete[]( void* block, std::size_t ) noexcept { std::free( block ); }

namespace {

using namespace BfResourceInfo;

/// Names that are too long for a string's own buffer.
String const name = "pipe.SwitchIngress.forwarding.a_name_of_usual_length";
String const unknown = "pipe.SwitchIngress.forwarding.a_name_of_nothing_here";

template<class Record>
Record named() {
    Record record;
    record.name = name;
    record.handle = 1;
    return record;
}

class QueryAllocation : public testing::Test {
  protected:
    QueryAllocation() {
        BfResourceParser& parser = *interface_->parser();
        parser.bfResourcesPush( named<BfResource>() );
        parser.bfTablesPush( named<BfTableInfo>() );
        parser.bfCountersPush( named<BfTableCounterInfo>() );
        parser.bfMetersPush( named<BfTableMeterInfo>() );
        parser.bfWredsPush( named<BfTableWredInfo>() );
        parser.bfRegisterInfosPush( named<BfRegisterInfo>() );
        parser.bfLearnQuantaInfosPush( named<BfLearnQuantaInfo>() );
        parser.bfActionsPush( named<BfActionInfo>() );
        parser.bfHeadersIs( name, BfHeaderInfo( 40 ) );
        parser.bfDynamicHashInfoIs( name, { 1, 2, 1, { name } } );
    }

    Zel::Ptr<BfResourceInfoIntf> const interface_ = bfResourceInfoIntfFactory( "" );
};

/// The sum of all answers, so that the compiler leaves no query out.
U32 askEverything( BfResourceInfoIntf& info ) {
    U32 sum = info.bfResourcesNum() + info.bfTablesNum() + info.bfTableCountersNum() +
              info.bfTableMetersNum() + info.bfTableWredNum() + info.bfRegistersNum() +
              info.bfLearnQuantasNum() + info.bfActionsNum() + info.bfTablesHitBitSmashSize();
    for( String const* const asked : { &name, &unknown } )
        sum += info.bfResourceIndex( *asked ) + info.bfTableIndex( *asked ) +
               info.bfTableCounterIndex( *asked ) + info.bfTableMeterIndex( *asked ) +
               info.bfTableWredIndex( *asked ) + info.bfRegisterIndex( *asked ) +
               info.bfLearnQuantaIndex( *asked ) + info.bfActionIndex( *asked ) +
               info.bfHeaderSize( *asked ) + info.bfDynHashTableHdl( *asked ) +
               info.bfDynHashFieldListHdl( *asked ) + info.bfDynHashFieldCount( *asked ) +
               info.bfDynHashFieldId( name, *asked );
    return sum + info.bfResourceField( name, resourceHandle ) +
           static_cast<U32>( info.bfResourceStageStart( name ) ) + info.bfTableField( name, tableHandle ) +
           info.bfTableCounterField( name, counterHandle ) + info.bfTableMeterField( name, meterHandle ) +
           info.bfTableWredField( name, wredHandle );
}

TEST_F( QueryAllocation, QueriesThatAnswerNumbersAllocateNothing ) {
    std::size_t const before = allocations;
    U32 const sum = askEverything( *interface_ );
    EXPECT_EQ( allocations, before );
    // Eight records, unknown names by the invalid index but for the header's 0, and the fields.
    EXPECT_EQ( sum, 8 + 40 + 1 + 2 + 1 + 12 * BfResourceInfoIndexInvalid + 1 + 0 + 4 );
}

TEST_F( QueryAllocation, CopiesOfRecordsAreCounted ) {
    std::size_t const before = allocations;
    EXPECT_EQ( interface_->bfTable( 0 ).name, name );
    EXPECT_GT( allocations, before );
}

} // namespace
