#include "inspect/diff/FieldComparer.h"

namespace Bfri {

namespace {

bool has( Row const& row, std::string_view flag, bool value ) {
    bool const* const is = std::get_if<bool>( &valueOf( row, flag ).is );
    return is && *is == value;
}

/// Direct counters and the like have the handle of their match table.
bool hasItsTablesHandle( Row const& row ) {
    return has( row, "direct", true ) || has( row, "indirect", false );
}

/// Sizes alone, without their stages.
List sizesIn( Value const& stageSizes ) {
    List const* const list = std::get_if<List>( &stageSizes.is );
    return list ? listOf( *list,
                          []( Value const& one ) { return valueOf( std::get<Row>( one.is ), "size" ); } )
                : List();
}

/// Whether a resource takes the same stages, all by one distance elsewhere. Where they are not known, as of
/// records of other kinds, it cannot be told.
bool haveMoved( Row const& from, Row const& to ) {
    List const* const old = std::get_if<List>( &valueOf( from, "stageNumbers" ).is );
    List const* const now = std::get_if<List>( &valueOf( to, "stageNumbers" ).is );
    U32 const distance = valueAs<U32>( to, "stageStart" ) - valueAs<U32>( from, "stageStart" );
    auto const isThere = [ distance ]( Value const& before, Value const& after ) {
        return std::get<U32>( before.is ) + distance == std::get<U32>( after.is );
    };
    return old && now && distance != 0 &&
           std::equal( old->begin(), old->end(), now->begin(), now->end(), isThere );
}

/// The name of the table with a handle in a program, or in the model if there is no program; null for none.
String const* nameOf( BfResourceParser const& parser, P4Program const& program, U32 handle ) {
    if( !program.file() ) {
        BfZelResource const* const placed = parser.resourceHandles().find( handle );
        return placed ? &placed->name : nullptr;
    }
    SurveyedTable const* const table = program.withHandle( handle );
    return table ? &table->name : nullptr;
}

/// A handle with the name of its table; absent for 0 if no table has it.
Value referentOf( BfResourceParser const& parser, P4Program const& program, Value const& handle ) {
    U32 const number = std::get<Hex>( handle.is ).value;
    String const* const name = nameOf( parser, program, number );
    if( number == 0 && !name )
        return {};
    return Row{ { "handle", handle }, { "name", name ? Value( *name ) : Value() } };
}

/// The same record, or the same number when neither configuration knows a name.
bool standForTheSame( ProgramPair const& programs, String const* old, String const* now, bool isSameNumber ) {
    return old && now ? programs.tables.renames.of( *old ) == *now : !old && !now && isSameNumber;
}

} // namespace

/// A record's rows while their fields are compared.
class FieldComparer::RecordPair {
  public:
    RecordPair( FieldComparer& all, ProgramPair& programs, RecordKind const& kind, ChangedRecord& record )
        : all_( all ), programs_( programs ), kind_( kind ), record_( record ) {}

    void compare() {
        bool isTouched = false;
        for( std::size_t i = 0; i < record_.row.size(); ++i ) {
            isTouched |= !same( record_.row[ i ].value, record_.now[ i ].value );
            compareField( record_.row[ i ], record_.now[ i ] );
        }
        Identity const identity( record_.row );
        if( isTouched )
            programs_.of( kind_.kind ).touched.insert( identity.table ? *identity.table : identity.name );
    }

  private:
    /// By what values mean, where they are not simply compared.
    void compareField( Field const& from, Field const& to ) {
        using Compare = void ( RecordPair::* )( Field const& from, Field const& to );
        static std::unordered_map<std::string_view, Compare> const special = {
            { "name", &RecordPair::ignore }, // joined by it, or renamed
            { "tableName", &RecordPair::ignore },
            { "adtName", &RecordPair::compareName },
            { "selName", &RecordPair::compareName },
            { "associatedTable", &RecordPair::compareName },
            { "parent", &RecordPair::compareName },
            { "handle", &RecordPair::compareOwnHandle },
            { "ownHandle", &RecordPair::compareOwnHandle },
            { "tableHdl", &RecordPair::compareOwnHandle },
            { "fieldListHdl", &RecordPair::compareOwnHandle },
            { "adtHandle", &RecordPair::compareReference },
            { "selHandle", &RecordPair::compareReference },
            { "statReferences", &RecordPair::compareReferences },
            { "meterReferences", &RecordPair::compareReferences },
            { "statefulReferences", &RecordPair::compareReferences },
            { "stageStart", &RecordPair::compareFirstStage },
            { "stageNumbers", &RecordPair::compareStages },
            { "stageSizes", &RecordPair::compareStageSizes },
            { "hitBitSmashOffset", &RecordPair::compareHitBits },
            { "hitBitSmashLast", &RecordPair::ignore }, // goes with the first
        };
        auto const found = special.find( from.name );
        ( this->*( found == special.end() ? &RecordPair::addIfOther : found->second ) )( from, to );
    }

    void ignore( Field const&, Field const& ) {}

    void add( std::string_view field, Value from, Value to ) {
        record_.fields.push_back( { field, std::move( from ), std::move( to ) } );
    }

    void addIfOther( Field const& from, Field const& to ) {
        if( !same( from.value, to.value ) )
            add( from.name, from.value, to.value );
    }

    /// The name of another record, which may have changed.
    void compareName( Field const& from, Field const& to ) {
        String const* const old = std::get_if<String>( &from.value.is );
        String const* const now = std::get_if<String>( &to.value.is );
        if( same( from.value, to.value ) )
            return;
        ComparedNames& names = programs_.of( kind_.kind );
        for( String const* const table : { old, now } ) {
            if( table )
                names.touched.insert( *table );
        }
        if( !old || !now || names.renames.of( *old ) != *now )
            add( from.name, from.value, to.value );
    }

    void compareOwnHandle( Field const& from, Field const& to ) {
        if( hasItsTablesHandle( record_.row ) || hasItsTablesHandle( record_.now ) )
            return compareReference( from, to );
        Identity const identity( record_.row );
        count(
            { kind_.kind, identity.name, identity.table ? std::optional( *identity.table ) : std::nullopt },
            from.value, to.value );
    }

    bool areSame( Value const& from, Value const& to ) const {
        U32 const old = std::get<Hex>( from.is ).value;
        U32 const now = std::get<Hex>( to.is ).value;
        return standForTheSame( programs_, nameOf( all_.old_, *programs_.old, old ),
                                nameOf( all_.now_, *programs_.now, now ), old == now );
    }

    void compareReference( Field const& from, Field const& to ) {
        if( areSame( from.value, to.value ) )
            countReference( from.value, to.value );
        else
            add( from.name, referentOf( all_.old_, *programs_.old, from.value ),
                 referentOf( all_.now_, *programs_.now, to.value ) );
    }

    void compareReferences( Field const& from, Field const& to ) {
        List const& old = std::get<List>( from.value.is );
        List const& now = std::get<List>( to.value.is );
        auto const referents = []( auto const& parser, P4Program const& program, List const& handles ) {
            return listOf( handles,
                           [ & ]( Value const& handle ) { return referentOf( parser, program, handle ); } );
        };
        if( !std::equal( old.begin(), old.end(), now.begin(), now.end(),
                         [ & ]( Value const& a, Value const& b ) { return areSame( a, b ); } ) )
            return add( from.name, referents( all_.old_, *programs_.old, old ),
                        referents( all_.now_, *programs_.now, now ) );
        for( std::size_t i = 0; i < old.size(); ++i )
            countReference( old[ i ], now[ i ] );
    }

    void countReference( Value const& from, Value const& to ) {
        String const* const name = nameOf( all_.old_, *programs_.old, std::get<Hex>( from.is ).value );
        count( { Kind::handles, name ? *name : "", {} }, from, to );
    }

    void count( HandleOwner owner, Value const& from, Value const& to ) {
        all_.count( programs_, { std::move( owner ), std::get<Hex>( from.is ).value,
                                 std::get<Hex>( to.is ).value, programs_.pipes } );
    }

    void compareFirstStage( Field const& from, Field const& to ) {
        if( haveMoved( record_.row, record_.now ) )
            record_.move = { from.name, from.value, to.value };
        else
            addIfOther( from, to );
    }

    void compareStages( Field const& from, Field const& to ) { // after the first
        if( !record_.move )
            addIfOther( from, to );
    }

    /// Stage after stage. Where the stages are not known any more, or were not, no sizes say so again.
    void compareStageSizes( Field const& from, Field const& to ) {
        bool const isStated = from.value.is.index() == to.value.is.index();
        bool const areComparable = isStated || same( valueOf( record_.row, "stageNumbers" ),
                                                     valueOf( record_.now, "stageNumbers" ) );
        if( areComparable && ( !isStated || !same( sizesIn( from.value ), sizesIn( to.value ) ) ) )
            addIfOther( from, to );
    }

    void compareHitBits( Field const&, Field const& ) {
        auto const first = []( Row const& row ) { return valueAs<U32>( row, "hitBitSmashOffset" ); };
        auto const last = []( Row const& row ) { return valueAs<U32>( row, "hitBitSmashLast" ); };
        Row const& from = record_.row;
        Row const& to = record_.now;
        bool const both = has( from, "hitBitSupported", true ) && has( to, "hitBitSupported", true );
        all_.shifted_.all += both;
        if( both && last( from ) - first( from ) == last( to ) - first( to ) ) {
            all_.shifted_.differing += first( from ) != first( to );
            return;
        }
        addIfOther( { "hitBitSmashOffset", first( from ) }, { "hitBitSmashOffset", first( to ) } );
        addIfOther( { "hitBitSmashLast", last( from ) }, { "hitBitSmashLast", last( to ) } );
    }

    FieldComparer& all_;
    ProgramPair& programs_;
    RecordKind const& kind_;
    ChangedRecord& record_;
};

ChangedRecord FieldComparer::compare( ProgramPair& programs, RecordKind const& kind, Row from, Row to ) {
    ChangedRecord record{ std::move( from ), std::move( to ) };
    RecordPair( *this, programs, kind, record ).compare();
    return record;
}

bool FieldComparer::countIfSame( ProgramPair const& programs, std::vector<U32> const& handles ) {
    auto const isSame = [ & ]( U32 handle ) {
        return standForTheSame( programs, nameOf( old_, *programs.old, handle ),
                                nameOf( now_, *programs.now, handle ), true );
    };
    if( !std::ranges::all_of( handles, isSame ) )
        return false;
    for( U32 const handle : handles )
        count( programs, { {}, handle, handle } );
    return true;
}

Tally FieldComparer::handles() const {
    Tally tally{ 0, handles_.size() };
    for( auto const& [ number, isOther ] : handles_ )
        tally.differing += isOther;
    return tally;
}

std::vector<Renumbering> FieldComparer::renumbered() const {
    std::vector<Renumbering> others;
    for( auto const& [ key, handle ] : renumbered_ )
        others.push_back( handle );
    return others;
}

/// References to a record may be counted before the record itself.
void FieldComparer::count( ProgramPair const& programs, Renumbering const& handle ) {
    if( handle.from == 0 && handle.to == 0 )
        return;
    bool const isOther = handle.from != handle.to;
    handles_[ std::uint64_t{ programs.pipes } << 32 | handle.from ] |= isOther;
    if( !isOther )
        return;
    auto const [ known, isNew ] =
        renumbered_.try_emplace( { handle.from, programs.pipes, handle.label() }, handle );
    if( !isNew && known->second.kind == Kind::handles )
        known->second.kind = handle.kind;
}

} // namespace Bfri
