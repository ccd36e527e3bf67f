#include "tests/resourceinfo/Fixtures.h"
#include "tests/resourceinfo/RecordKinds.h"
#include "tests/support/Assertions.h"
#include "vessa/VectorException.h"

#include <array>
#include <cstring>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <random>

// Random changes to a model by the parser's own operations, and every query compared with a scan over plain
// vectors and maps.

namespace BfResourceInfo {
namespace {

using Support::conditionOf;

char const* const unknownQueryModelName = "index != BfResourceInfoIndexInvalid";

/// Few names and handles, so that they collide.
class Random {
  public:
    U32 below( U32 bound ) { return std::uniform_int_distribution<U32>( 0, bound - 1 )( random_ ); }

    /// Some have a NUL inside, some are empty.
    String name() {
        String name = "name." + std::to_string( below( 12 ) );
        if( below( 6 ) == 0 )
            name += String( "\0x", 2 ) + std::to_string( below( 3 ) );
        return below( 20 ) == 0 ? String() : name;
    }
    U32 handle() { return below( 12 ) | below( 2 ) << 28; }

    void fill( String& text ) { text = name(); }
    void fill( U32& number ) { number = handle(); }
    void fill( bool& flag ) { flag = below( 2 ) == 1; }

    template<class Record>
    Record record() {
        Record record{};
        std::apply( [ & ]( auto... field ) { ( fill( record.*field ), ... ); }, fields<Record> );
        return record;
    }

  private:
    std::mt19937 random_{ 20240607 };
};

/// One kind of record: the test's own sequence, changed as the parser's is.
template<class Kind>
class RecordModel {
  public:
    using Record = typename Kind::Record;

    RecordModel( BfResourceInfoIntf& info, Random& random ) : info_( info ), random_( random ) {}

    void change() {
        BfResourceParser& parser = *info_.parser();
        U32 const choice = random_.below( 200 );
        if( choice < 110 ) {
            records_.push_back( random_.record<Record>() );
            std::invoke( Kind::push, parser, records_.back() );
        } else if( choice == 199 ) {
            records_.clear();
            std::invoke( Kind::popAll, parser );
        } else if( !records_.empty() && choice < 160 ) {
            U32 const index = random_.below( size() );
            records_[ index ] = random_.record<Record>();
            std::invoke( Kind::is, parser, index, records_[ index ] );
        } else if( !records_.empty() ) {
            EXPECT_TRUE( same( std::invoke( Kind::pop, parser ), records_.back() ) );
            records_.pop_back();
        }
    }

    /// Asks every query of the kind.
    void check() {
        String const name = random_.name();
        U32 const index = indexOf( name );
        EXPECT_EQ( std::invoke( Kind::num, info_ ), size() );
        EXPECT_EQ( std::invoke( Kind::index, info_, name ), index == size() ? 0x0FFFFFFF : index );
        checkRecord( random_.below( size() + 2 ) );
        if constexpr( identifiers > 0 )
            checkField( name, index );
        checkOthers( Kind(), name, index );
    }

    /// The record of that name, null when there is none.
    Record const* find( String const& name ) const {
        U32 const index = indexOf( name );
        return index == size() ? nullptr : &records_[ index ];
    }

  private:
    static constexpr bool isTable = std::is_same_v<Kind, Tables>;
    static constexpr U32 identifiers = std::tuple_size_v<decltype( identified<Kind> )>;

    U32 size() const { return static_cast<U32>( records_.size() ); }

    /// The first index that matches, else the number of records.
    template<class Match>
    U32 scan( Match match ) const {
        U32 i = 0;
        while( i < size() && !match( records_[ i ] ) )
            ++i;
        return i;
    }
    U32 indexOf( String const& name ) const {
        return scan( [ & ]( Record const& r ) { return std::strcmp( r.name.c_str(), name.c_str() ) == 0; } );
    }

    void checkRecord( U32 index ) {
        auto const query = [ & ] { return std::invoke( Kind::record, info_, index ); };
        if( index < size() )
            EXPECT_TRUE( same( query(), records_[ index ] ) );
        else if( isTable )
            EXPECT_THROW( query(), Vessa::VectorOutOfRange );
        else
            EXPECT_EQ( conditionOf( query ), Kind::bound );
    }

    /// The field that an identifier names, as the caller gets it.
    static U32 field( Record const& record, U32 identifier ) {
        U32 value = 0;
        std::apply(
            [ &, i = 0U ]( auto... field ) mutable {
                ( ( i++ == identifier ? value = U32{ record.*field } : 0 ), ... );
            },
            identified<Kind> );
        return value;
    }

    /// One query by identifier: a served one, or the first that is not.
    void checkField( String const& name, U32 index ) {
        constexpr char const* noField = std::is_same_v<Kind, Resources> ? "0 && \"Unsupported field\"" : "0";
        U32 const identifier = random_.below( identifiers * 4 + 1 ) % ( identifiers + 1 );
        auto const query = [ & ] {
            return std::invoke( fieldQuery<Kind>, info_, name, static_cast<Identifier<Kind>>( identifier ) );
        };
        if( index == size() )
            EXPECT_EQ( conditionOf( query ), unknownQueryModelName );
        else if( identifier == identifiers )
            EXPECT_EQ( conditionOf( query ), noField );
        else
            EXPECT_EQ( query(), field( records_[ index ], identifier ) ) << "identifier " << identifier;
    }

    /// A query by handle.
    template<class Query>
    void checkHandle( Query byHandle ) {
        U32 const handle = random_.handle();
        U32 const index = scan( [ & ]( Record const& r ) { return r.handle == handle; } );
        auto const query = [ & ] { return std::invoke( byHandle, info_, handle ); };
        if( index == size() )
            EXPECT_EQ( conditionOf( query ), "0" );
        else
            EXPECT_TRUE( same( query(), records_[ index ] ) );
    }

    // Queries that only some kinds have.
    template<class Other>
    void checkOthers( Other, String const&, U32 ) {}
    void checkOthers( Resources, String const& name, U32 index ) {
        checkHandle( &BfResourceInfoIntf::bfResourceByHandle );
        auto const stageStart = [ & ] { return info_.bfResourceStageStart( name ); };
        if( index == size() )
            EXPECT_EQ( conditionOf( stageStart ), unknownQueryModelName );
        else
            EXPECT_EQ( stageStart(), static_cast<int>( records_[ index ].stageStart ) );
    }
    void checkOthers( Tables, String const& name, U32 index ) {
        checkHandle( &BfResourceInfoIntf::bfTableByHandle );
        U32 const at = random_.below( size() + 1 );
        auto const nameAt = [ & ] { return info_.bfTableName( at ); };
        if( at == size() )
            EXPECT_THROW( nameAt(), Vessa::VectorOutOfRange );
        else
            EXPECT_EQ( nameAt(), records_[ at ].name );
        U32 const identifier = random_.below( 4 );
        auto const text = [ & ] {
            return info_.bfTableString( name, static_cast<BfTableStringId>( identifier ) );
        };
        if( index == size() )
            EXPECT_EQ( conditionOf( text ), unknownQueryModelName );
        else if( identifier == 3 )
            EXPECT_EQ( conditionOf( text ), "0" );
        else
            EXPECT_EQ( text(), ( std::array{ records_[ index ].adtName, records_[ index ].selName,
                                             records_[ index ].logicalPipe }[ identifier ] ) );
    }

    BfResourceInfoIntf& info_;
    Random& random_;
    std::vector<Record> records_;
};

/// Things that only have a name: the test's own map, changed as the parser's is by the given operations.
template<class Value, auto is, auto del, auto delAll>
class MapModel {
  public:
    MapModel( BfResourceInfoIntf& info, Random& random ) : info_( info ), random_( random ) {}

  protected:
    void change( Value const& value ) {
        BfResourceParser& parser = *info_.parser();
        U32 const choice = random_.below( 100 );
        String const name = random_.name();
        if( choice < 55 ) {
            values_[ name ] = value;
            std::invoke( is, parser, name, value );
        } else if( choice < 98 ) {
            values_.erase( name );
            std::invoke( del, parser, name );
        } else {
            values_.clear();
            std::invoke( delAll, parser );
        }
    }
    Value valueOr( String const& name, Value const& missing ) const {
        auto const found = values_.find( name );
        return found == values_.end() ? missing : found->second;
    }

    BfResourceInfoIntf& info_;
    Random& random_;

  private:
    std::map<String, Value> values_;
};

using Parser = BfResourceParser;

class HeaderModel
    : public MapModel<BfHeaderInfo, &Parser::bfHeadersIs, &Parser::bfHeadersDel, &Parser::bfHeadersDelAll> {
  public:
    using MapModel::MapModel;

    void change() { MapModel::change( BfHeaderInfo( static_cast<U16>( random_.below( 65536 ) ) ) ); }

    void check() {
        String const name = random_.name();
        EXPECT_EQ( info_.bfHeaderSize( name ), valueOr( name, BfHeaderInfo( 0 ) ).size() );
    }
};

class HashModel : public MapModel<BfDynamicHashInfo, &Parser::bfDynamicHashInfoIs,
                                  &Parser::bfDynamicHashInfoDel, &Parser::bfDynamicHashInfoDelAll> {
  public:
    using MapModel::MapModel;

    void change() {
        BfDynamicHashInfo hash{ random_.handle(), random_.handle(), random_.below( 8 ), {} };
        for( U32 i = 0; i < hash.fieldCount; ++i )
            hash.fieldNames.push_back( random_.name() );
        MapModel::change( hash );
    }

    void check() {
        String const name = random_.name();
        String const field = random_.name();
        // A missing record answers like one whose every number is the invalid index.
        constexpr U32 none = 0x0FFFFFFF;
        BfDynamicHashInfo const hash = valueOr( name, { none, none, none, {} } );
        U32 position = 0;
        while( position < hash.fieldNames.size() && hash.fieldNames[ position ] != field )
            ++position;
        EXPECT_EQ( info_.bfDynHashTableHdl( name ), hash.tableHdl );
        EXPECT_EQ( info_.bfDynHashFieldListHdl( name ), hash.fieldListHdl );
        EXPECT_EQ( info_.bfDynHashFieldCount( name ), hash.fieldCount );
        EXPECT_EQ( info_.bfDynHashFieldId( name, field ),
                   position == hash.fieldNames.size() ? none : position );
    }
};

class QueryModel : public testing::Test {
  protected:
    template<class... Models>
    static void changeOne( U32 which, Models&... models ) {
        U32 i = 0;
        ( ( i++ == which ? models.change() : void() ), ... );
    }

    void change() {
        std::apply( [ & ]( auto&... model ) { changeOne( random_.below( sizeof...( model ) ), model... ); },
                    models_ );
        if( random_.below( 10 ) == 0 )
            info_->parser()->hitBitSmashEntriesIs( hitBitSmashEntries_ = random_.handle() );
    }

    void check() {
        std::apply( []( auto&... model ) { ( model.check(), ... ); }, models_ );
        checkAssociatedTable();
        EXPECT_EQ( info_->bfTablesHitBitSmashSize(), hitBitSmashEntries_ );
    }

    void checkAssociatedTable() {
        String const name = random_.name();
        auto const query = [ & ] { return info_->bfAssociatedTable( name ); };
        if( auto const* meter = std::get<RecordModel<Meters>>( models_ ).find( name ) )
            EXPECT_EQ( query(), meter->associatedTable );
        else if( auto const* counter = std::get<RecordModel<Counters>>( models_ ).find( name ) )
            EXPECT_EQ( query(), counter->associatedTable );
        else
            EXPECT_EQ( conditionOf( query ), "false && \"check table name\"" );
    }

    template<class Kind>
    RecordModel<Kind> records() {
        return { *info_, random_ };
    }

    Random random_;
    Zel::Ptr<BfResourceInfoIntf> info_ = emptyInterface();
    U32 hitBitSmashEntries_ = 0;
    std::tuple<RecordModel<Resources>, RecordModel<Tables>, RecordModel<Counters>, RecordModel<Meters>,
               RecordModel<Wreds>, RecordModel<Registers>, RecordModel<LearnQuantas>, RecordModel<Actions>,
               HeaderModel, HashModel>
        models_{ records<Resources>(),        records<Tables>(),  records<Counters>(),
                 records<Meters>(),           records<Wreds>(),   records<Registers>(),
                 records<LearnQuantas>(),     records<Actions>(), HeaderModel( *info_, random_ ),
                 HashModel( *info_, random_ ) };
};

TEST_F( QueryModel, QueriesAnswerAsAScanWould ) {
    for( int step = 0; step < 25'000; ++step ) { // of 41 queries each: a million
        change();
        check();
        ASSERT_FALSE( HasFailure() ) << "step " << step;
    }
}

} // namespace
} // namespace BfResourceInfo
