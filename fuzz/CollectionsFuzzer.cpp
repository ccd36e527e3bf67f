// Operations on the collections of a parser, beside a naive model of each.

#include "fuzz/MapModels.h"
#include "fuzz/SequenceModel.h"

#include <array>
#include <deque>
#include <optional>
#include <set>

namespace BfResourceInfo {
namespace {

using Parser = BfResourceParser;

/// The names that several tables have named.
class SetModel {
  public:
    explicit SetModel( Parser& parser ) : parser_( parser ) {}

    void step( Choices& choices ) {
        U32 const operation = choices.below( 16 );
        String const name = take<String>( choices );
        change(
            operation,
            [ & ] {
                model_.insert( name );
                parser_.multipleParentTablesIs( name );
            },
            [ & ] {
                String const removed = model_.erase( name ) > 0 ? name : String();
                require( parser_.multipleParentTablesDel( name ) == removed, "removed another name" );
            },
            [ & ] {
                model_.clear();
                parser_.multipleParentTablesDelAll();
            } );
        auto const& tested = parser_.multipleParentTables();
        require( std::set<String>( tested.begin(), tested.end() ) == model_, "names" );
        require( tested.size() == model_.size(), "size" );
        require( parser_.multipleParentTablesHas( name ) == model_.contains( name ),
                 "whether a name is there" );
    }

  private:
    Parser& parser_;
    std::set<String> model_;
};

/// The operations of one of the three queues of a placed table.
struct QueueKind {
    char const* references;
    Vessa::Queue<U32> const& ( BfZelResource::*queue )() const;
    void ( BfZelResource::*enq )( U32 );
    U32 ( BfZelResource::*deq )();
    U32 ( BfZelResource::*front )() const;
    U32 ( BfZelResource::*back )() const;
    void ( BfZelResource::*delAll )();
};

using R = BfZelResource;
constexpr std::array<QueueKind, 3> queueKinds{ {
    { "statistics_table_refs", &R::statReferences, &R::statReferencesEnq, &R::statReferencesDeq,
      &R::statReferencesFront, &R::statReferencesBack, &R::statReferencesDelAll },
    { "meter_table_refs", &R::meterReferences, &R::meterReferencesEnq, &R::meterReferencesDeq,
      &R::meterReferencesFront, &R::meterReferencesBack, &R::meterReferencesDelAll },
    { "stateful_table_refs", &R::statefulReferences, &R::statefulReferencesEnq, &R::statefulReferencesDeq,
      &R::statefulReferencesFront, &R::statefulReferencesBack, &R::statefulReferencesDelAll },
} };

/// A placed table and, beside it, its queues.
struct Placed {
    BfZelResource tested;
    std::array<std::deque<U32>, 3> queues;

    void step( Choices& choices ) {
        U32 const which = choices.below( 3 );
        QueueKind const& kind = queueKinds[ which ];
        std::deque<U32>& queue = queues[ which ];
        change(
            choices.below( 16 ),
            [ & ] { ( tested.*kind.enq )( queue.emplace_back( take<U32>( choices ) ) ); },
            [ & ] {
                require( ( tested.*kind.deq )() == ( queue.empty() ? 0 : queue.front() ), "another front" );
                if( !queue.empty() )
                    queue.pop_front();
            },
            [ & ] {
                queue.clear();
                ( tested.*kind.delAll )();
            } );
        check();
    }

    void check() const {
        for( std::size_t i = 0; i < queueKinds.size(); ++i ) {
            auto const& queue = queues[ i ];
            auto const& testedQueue = ( tested.*queueKinds[ i ].queue )();
            require( std::equal( testedQueue.begin(), testedQueue.end(), queue.begin(), queue.end() ),
                     "queue" );
            require( testedQueue.size() == queue.size() && testedQueue.empty() == queue.empty(), "size" );
            require( ( tested.*queueKinds[ i ].front )() == ( queue.empty() ? 0 : queue.front() ), "front" );
            require( ( tested.*queueKinds[ i ].back )() == ( queue.empty() ? 0 : queue.back() ), "back" );
        }
    }

    bool lists( std::size_t kind, U32 reference ) const {
        return std::find( queues[ kind ].begin(), queues[ kind ].end(), reference ) != queues[ kind ].end();
    }
};

/// The placed tables by handle, and who references whom.
class HandlesModel {
  public:
    explicit HandlesModel( Parser& parser ) : parser_( parser ) {}

    void step( Choices& choices ) {
        U32 const operation = choices.below( 16 );
        U32 const handle = take<U32>( choices );
        if( operation < 8 )
            draft_.step( choices );
        else if( operation < 12 )
            place( handle );
        else if( operation < 15 )
            remove( handle );
        else
            removeAll();
        check( take<U32>( choices ) );
    }

  private:
    void place( U32 handle ) {
        draft_.tested.handle = handle;
        parser_.resourceHandlesIs( handle, draft_.tested );
        model_[ handle ] = draft_;
    }
    /// Removed elements are used further.
    void remove( U32 handle ) {
        draft_ = removedFrom( model_, handle );
        BfZelResource removed = parser_.resourceHandlesDel( handle );
        require( removed == draft_.tested, "removed another table" );
        draft_.tested = std::move( removed );
    }
    void removeAll() {
        model_.clear();
        parser_.resourceHandlesDelAll();
    }

    void check( U32 handle ) const {
        ResourceHandles const& tested = parser_.resourceHandles();
        require( tested.size() == model_.size(), "size" );
        for( auto const& [ key, resource ] : tested )
            require( model_.contains( key ) && model_.at( key ).tested == resource, "table" );
        require( tested.has( handle ) == model_.contains( handle ), "whether a handle is there" );
        require( tested.value( handle ) == valueOf( model_, handle ).tested, "table of a handle" );
        for( std::size_t kind = 0; kind < queueKinds.size(); ++kind )
            require( tested.referrer( queueKinds[ kind ].references, handle ) == referrer( kind, handle ),
                     "who references it" );
    }
    std::optional<U32> referrer( std::size_t kind, U32 reference ) const {
        for( auto const& [ handle, placed ] : model_ ) {
            if( placed.lists( kind, reference ) )
                return handle;
        }
        return std::nullopt;
    }

    Parser& parser_;
    Placed draft_;
    std::map<U32, Placed> model_;
};

// The maps' reading operations have the name of those that give one value.
constexpr auto headersOf = []( Parser const& parser ) -> auto& { return parser.bfHeaders(); };
constexpr auto parentsOf = []( Parser const& parser ) -> auto& { return parser.parentTable(); };

void run( Choices choices ) {
    auto const parser = bfResourceParserFactory( "" );
    SequenceModel<BfTableInfo, &Parser::bfTables, &Parser::bfTablesPush, &Parser::bfTablesIs,
                  &Parser::bfTablesPop, &Parser::bfTablesPopAll>
        tables( *parser );
    SequenceModel<BfResource, &Parser::bfResources, &Parser::bfResourcesPush, &Parser::bfResourcesIs,
                  &Parser::bfResourcesPop, &Parser::bfResourcesPopAll>
        resources( *parser );
    OrderedMapModel<Parser::contextFileMap> files;
    OrderedMapModel<Parser::ingressPhvContainersMap> containers;
    HashMapModel<BfHeaderInfo, headersOf, &Parser::bfHeadersIs, &Parser::bfHeadersDel,
                 &Parser::bfHeadersDelAll>
        headers( *parser );
    HashMapModel<String, parentsOf, &Parser::parentTableIs, &Parser::parentTableDel,
                 &Parser::parentTableDelAll>
        parents( *parser );
    SetModel names( *parser );
    HandlesModel handles( *parser );
    auto const stepOne = [ & ]( U32 which, auto&... models ) {
        ( ( which-- == 0 ? models.step( choices ) : void() ), ... );
    };
    while( !choices.empty() )
        stepOne( choices.below( 8 ), tables, resources, files, containers, headers, parents, names, handles );
}

} // namespace
} // namespace BfResourceInfo

int LLVMFuzzerTestOneInput( std::uint8_t const* data, std::size_t size ) {
    BfResourceInfo::run( Choices( { data, size } ) );
    return 0;
}
