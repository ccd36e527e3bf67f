#include "tests/resourceinfo/Fixtures.h"
#include "tests/support/Assertions.h"
#include "vessa/VectorException.h"

#include <cstring>
#include <gtest/gtest.h>
#include <random>

// Random changes to a model, and every query compared with a scan from index 0.

namespace BfResourceInfo {
namespace {

BfResource randomRecord( BfResource const*, String name, U32 handle, U32 size ) {
    return { std::move( name ), handle, size % 13, size, size % 2 == 0, size % 7, size % 20 };
}

BfTableInfo randomRecord( BfTableInfo const*, String name, U32 handle, U32 size ) {
    BfTableInfo table;
    table.adtName = name + ".adt";
    table.name = std::move( name );
    table.handle = handle;
    table.size = size;
    return table;
}

/// The index that a scan finds, else the number of records.
template<class Record, class Match>
std::size_t scan( std::vector<Record> const& records, Match match ) {
    std::size_t i = 0;
    while( i < records.size() && !match( records[ i ] ) )
        ++i;
    return i;
}

/// The operations of a sequence, and the queries over it.
struct Resources {
    using Record = BfResource;
    static void push( BfResourceParser& p, Record r ) { p.bfResourcesPush( std::move( r ) ); }
    static void is( BfResourceParser& p, U32 i, Record r ) { p.bfResourcesIs( i, std::move( r ) ); }
    static Record pop( BfResourceParser& p ) { return p.bfResourcesPop(); }
    static void popAll( BfResourceParser& p ) { p.bfResourcesPopAll(); }
    static U32 num( BfResourceInfoIntf const& info ) { return info.bfResourcesNum(); }
    static U32 index( BfResourceInfoIntf const& info, String const& n ) { return info.bfResourceIndex( n ); }
    static U32 size( BfResourceInfoIntf const& info, String const& n ) {
        return info.bfResourceField( n, resourceSize );
    }
    static Record byHandle( BfResourceInfoIntf const& info, U32 h ) { return info.bfResourceByHandle( h ); }
};

struct Tables {
    using Record = BfTableInfo;
    static void push( BfResourceParser& p, Record r ) { p.bfTablesPush( std::move( r ) ); }
    static void is( BfResourceParser& p, U32 i, Record r ) { p.bfTablesIs( i, std::move( r ) ); }
    static Record pop( BfResourceParser& p ) { return p.bfTablesPop(); }
    static void popAll( BfResourceParser& p ) { p.bfTablesPopAll(); }
    static U32 num( BfResourceInfoIntf const& info ) { return info.bfTablesNum(); }
    static U32 index( BfResourceInfoIntf const& info, String const& n ) { return info.bfTableIndex( n ); }
    static U32 size( BfResourceInfoIntf const& info, String const& n ) {
        return info.bfTableField( n, tableSize );
    }
    static Record byHandle( BfResourceInfoIntf const& info, U32 h ) { return info.bfTableByHandle( h ); }
};

template<class Kind>
class QueryModel : public testing::Test {
  protected:
    using Record = typename Kind::Record;

    U32 below( U32 bound ) { return std::uniform_int_distribution<U32>( 0, bound - 1 )( random_ ); }

    /// Few names and handles, so that they collide; some names have a NUL inside.
    String randomName() {
        String name = "table." + std::to_string( below( 12 ) );
        if( below( 6 ) == 0 )
            name += String( "\0x", 2 ) + std::to_string( below( 3 ) );
        return below( 20 ) == 0 ? String() : name;
    }
    U32 randomHandle() { return below( 12 ) | below( 2 ) << 28; }
    Record randomOne() {
        return randomRecord( static_cast<Record*>( nullptr ), randomName(), randomHandle(), below( 1000 ) );
    }

    void change() {
        BfResourceParser& parser = *info_->parser();
        U32 const choice = below( 100 );
        if( choice < 55 ) {
            model_.push_back( randomOne() );
            Kind::push( parser, model_.back() );
        } else if( choice < 80 && !model_.empty() ) {
            U32 const index = below( static_cast<U32>( model_.size() ) );
            model_[ index ] = randomOne();
            Kind::is( parser, index, model_[ index ] );
        } else if( choice < 99 && !model_.empty() ) {
            EXPECT_EQ( Kind::pop( parser ).size, model_.back().size );
            model_.pop_back();
        } else if( choice == 99 ) {
            model_.clear();
            Kind::popAll( parser );
        }
    }

    void checkName( String const& name ) {
        std::size_t const expected = scan(
            model_, [ & ]( Record const& r ) { return std::strcmp( r.name.c_str(), name.c_str() ) == 0; } );
        if( expected == model_.size() ) {
            EXPECT_EQ( Kind::index( *info_, name ), BfResourceInfoIndexInvalid );
            return;
        }
        EXPECT_EQ( Kind::index( *info_, name ), expected );
        EXPECT_EQ( Kind::size( *info_, name ), model_[ expected ].size );
    }

    void checkHandle( U32 handle ) {
        std::size_t const expected = scan( model_, [ & ]( Record const& r ) { return r.handle == handle; } );
        if( expected == model_.size() ) {
            EXPECT_EQ( Support::conditionOf( [ & ] { Kind::byHandle( *info_, handle ); } ), "0" );
            return;
        }
        Record const found = Kind::byHandle( *info_, handle );
        EXPECT_EQ( found.name, model_[ expected ].name );
        EXPECT_EQ( found.size, model_[ expected ].size );
    }

    std::mt19937 random_{ 20240607 };
    Zel::Ptr<BfResourceInfoIntf> info_ = emptyInterface();
    std::vector<Record> model_;
};

using Kinds = testing::Types<Resources, Tables>;
TYPED_TEST_SUITE( QueryModel, Kinds );

TYPED_TEST( QueryModel, QueriesAnswerAsAScanWould ) {
    for( int step = 0; step < 3000 && !this->HasFailure(); ++step ) {
        this->change();
        ASSERT_EQ( TypeParam::num( *this->info_ ), this->model_.size() ) << "step " << step;
        for( int i = 0; i < 3; ++i ) {
            this->checkName( this->randomName() );
            this->checkHandle( this->randomHandle() );
        }
        ASSERT_FALSE( this->HasFailure() ) << "step " << step;
    }
}

} // namespace
} // namespace BfResourceInfo
