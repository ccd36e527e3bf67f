#include "inspect/diff/FieldComparer.h"

#include "inspect/diff/Join.h"

namespace Bfri {

/// What the values of a field are, if they are not simply compared.
enum class FieldMeaning : std::uint8_t {
    plain,
    ownName,
    name,
    ownHandle,
    reference,
    references,
    stage,
    stages,
    stageSizes,
    firstHitBit,
    lastHitBit
};

namespace {

constexpr std::pair<std::string_view, FieldMeaning> meanings[] = {
    { "name", FieldMeaning::ownName },
    { "tableName", FieldMeaning::ownName },
    { "adtName", FieldMeaning::name },
    { "selName", FieldMeaning::name },
    { "associatedTable", FieldMeaning::name },
    { "parent", FieldMeaning::name },
    { "handle", FieldMeaning::ownHandle },
    { "ownHandle", FieldMeaning::ownHandle },
    { "tableHdl", FieldMeaning::ownHandle },
    { "fieldListHdl", FieldMeaning::ownHandle },
    { "adtHandle", FieldMeaning::reference },
    { "selHandle", FieldMeaning::reference },
    { "statReferences", FieldMeaning::references },
    { "meterReferences", FieldMeaning::references },
    { "statefulReferences", FieldMeaning::references },
    { "stageStart", FieldMeaning::stage },
    { "stageNumbers", FieldMeaning::stages },
    { "stageSizes", FieldMeaning::stageSizes },
    { "hitBitSmashOffset", FieldMeaning::firstHitBit },
    { "hitBitSmashLast", FieldMeaning::lastHitBit },
};

FieldMeaning fieldMeaningOf( std::string_view field ) {
    for( auto const& [ name, meaning ] : meanings ) {
        if( name == field )
            return meaning;
    }
    return FieldMeaning::plain;
}

bool has( Row const& row, std::string_view flag, bool value ) {
    bool const* const is = std::get_if<bool>( &valueOf( row, flag ).is );
    return is && *is == value;
}

/// Direct counters and the like have the handle of their match table.
bool bearsItsTablesHandle( Row const& row ) {
    return has( row, "direct", true ) || has( row, "indirect", false );
}

Renumbering ownHandle( RecordKind const& kind, Row const& row, Value const& old, Value const& now ) {
    Identity const identity( row );
    return { { kind.kind, identity.name, identity.table ? std::optional( *identity.table ) : std::nullopt },
             std::get<Hex>( old.is ).value,
             std::get<Hex>( now.is ).value,
             0 };
}

void addIfOther( std::vector<Change>& changes, Field const& from, Field const& to ) {
    if( !same( from.value, to.value ) )
        changes.push_back( { from.name, from.value, to.value } );
}

/// Sizes alone, without their stages.
List sizesIn( Value const& stageSizes ) {
    List const* const list = std::get_if<List>( &stageSizes.is );
    return list ? listOf( *list,
                          []( Value const& one ) { return valueOf( std::get<Row>( one.is ), "size" ); } )
                : List();
}

/// Whether the entries by stage differ, stage after stage. Where the stages are not known any more, or were
/// not, no sizes say so again.
bool haveOtherSizes( Row const& from, Row const& to ) {
    Value const& old = valueOf( from, "stageSizes" );
    Value const& now = valueOf( to, "stageSizes" );
    bool const areComparable = old.is.index() == now.is.index() ||
                               same( valueOf( from, "stageNumbers" ), valueOf( to, "stageNumbers" ) );
    return areComparable && ( old.is.index() != now.is.index() || !same( sizesIn( old ), sizesIn( now ) ) );
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

} // namespace

FieldComparer::Referents::Referents( Configuration const& configuration )
    : parser_( configuration.parser() ) {
    for( BfTableInfo const& table : parser_.bfTables() )
        unplaced_.try_emplace( table.handle, &table.name );
}

String const* FieldComparer::Referents::nameOf( P4Program const& program, Hex handle ) const {
    if( program.file() ) {
        SurveyedTable const* const table = program.withHandle( handle.value );
        return table ? &table->name : nullptr;
    }
    if( auto const* const placed = parser_.resourceHandles().find( handle.value ) )
        return &placed->name;
    auto const table = unplaced_.find( handle.value );
    return table == unplaced_.end() ? nullptr : table->second;
}

Value FieldComparer::Referents::standsFor( P4Program const& program, Hex handle ) const {
    String const* const name = nameOf( program, handle );
    if( handle.value == 0 && !name )
        return {};
    return Row{ { "handle", handle }, { "name", name ? Value( *name ) : Value() } };
}

FieldComparer::FieldComparer( Configuration const& old, Configuration const& now )
    : old_( old ), now_( now ) {}

ChangedRecord FieldComparer::compare( ComparedPrograms& programs, RecordKind const& kind, Row const& from,
                                      Row const& to ) {
    readMeanings( kind, from );
    ChangedRecord record;
    Pair const pair{ programs, kind, from, to, record };
    bool isTouched = false;
    for( std::size_t i = 0; i < from.size(); ++i ) {
        isTouched |= !same( from[ i ].value, to[ i ].value );
        compareField( pair, i );
    }
    if( isTouched ) {
        Identity const identity( from );
        programs.touched.insert( identity.table ? *identity.table : identity.name );
    }
    return record;
}

/// All rows of a kind have the same fields.
void FieldComparer::readMeanings( RecordKind const& kind, Row const& row ) {
    if( kind_ == &kind )
        return;
    kind_ = &kind;
    meanings_.clear();
    for( Field const& field : row )
        meanings_.push_back( fieldMeaningOf( field.name ) );
}

void FieldComparer::compareField( Pair const& pair, std::size_t field ) {
    Field const& from = pair.from[ field ];
    Field const& to = pair.to[ field ];
    std::vector<Change>& changes = pair.record.fields;
    switch( meanings_[ field ] ) {
    case FieldMeaning::plain:
        return addIfOther( changes, from, to );
    case FieldMeaning::ownName: // joined by it, or renamed
        return;
    case FieldMeaning::name:
        return compareName( pair, from, to );
    case FieldMeaning::ownHandle:
        if( bearsItsTablesHandle( pair.from ) || bearsItsTablesHandle( pair.to ) )
            return compareReference( pair, from, to );
        return count( pair.programs, ownHandle( pair.kind, pair.from, from.value, to.value ) );
    case FieldMeaning::reference:
        return compareReference( pair, from, to );
    case FieldMeaning::references:
        return compareReferences( pair, from, to );
    case FieldMeaning::stage:
        if( !haveMoved( pair.from, pair.to ) )
            return addIfOther( changes, from, to );
        pair.record.move = { from.name, from.value, to.value };
        return;
    case FieldMeaning::stages: // after the first
        if( !pair.record.move )
            addIfOther( changes, from, to );
        return;
    case FieldMeaning::stageSizes:
        if( haveOtherSizes( pair.from, pair.to ) )
            addIfOther( changes, from, to );
        return;
    case FieldMeaning::firstHitBit:
        return compareHitBits( pair );
    case FieldMeaning::lastHitBit: // went with the first
        return;
    }
}

/// The name of another record, which may have changed.
void FieldComparer::compareName( Pair const& pair, Field const& from, Field const& to ) const {
    String const* const old = std::get_if<String>( &from.value.is );
    String const* const now = std::get_if<String>( &to.value.is );
    if( same( from.value, to.value ) )
        return;
    for( String const* const table : { old, now } ) {
        if( table )
            pair.programs.touched.insert( *table );
    }
    if( !old || !now || pair.programs.renames.of( *old ) != *now )
        addIfOther( pair.record.fields, from, to );
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
    std::stable_sort( others.begin(), others.end(),
                      []( auto const& a, auto const& b ) { return a.from < b.from; } );
    return others;
}

void FieldComparer::compareReference( Pair const& pair, Field const& from, Field const& to ) {
    auto const& [ old, now, renames, pipes, touched ] = pair.programs;
    if( standForTheSame( pair.programs, from.value, to.value ) )
        countReference( pair.programs, from.value, to.value );
    else
        pair.record.fields.push_back( { from.name, old_.standsFor( old, std::get<Hex>( from.value.is ) ),
                                        now_.standsFor( now, std::get<Hex>( to.value.is ) ) } );
}

void FieldComparer::compareReferences( Pair const& pair, Field const& from, Field const& to ) {
    List const& old = std::get<List>( from.value.is );
    List const& now = std::get<List>( to.value.is );
    bool const alike = std::equal( old.begin(), old.end(), now.begin(), now.end(), [ & ]( auto& a, auto& b ) {
        return standForTheSame( pair.programs, a, b );
    } );
    auto const referents = []( Referents const& all, P4Program const& program, List const& handles ) {
        return listOf( handles, [ & ]( Value const& handle ) {
            return all.standsFor( program, std::get<Hex>( handle.is ) );
        } );
    };
    if( !alike )
        pair.record.fields.push_back( { from.name, referents( old_, pair.programs.old, old ),
                                        referents( now_, pair.programs.now, now ) } );
    for( std::size_t i = 0; alike && i < old.size(); ++i )
        countReference( pair.programs, old[ i ], now[ i ] );
}

void FieldComparer::compareHitBits( Pair const& pair ) {
    auto const& [ from, to ] = std::pair<Row const&, Row const&>( pair.from, pair.to );
    auto const first = []( Row const& row ) { return valueAs<U32>( row, "hitBitSmashOffset" ); };
    auto const last = []( Row const& row ) { return valueAs<U32>( row, "hitBitSmashLast" ); };
    bool const both = has( from, "hitBitSupported", true ) && has( to, "hitBitSupported", true );
    bool const asLong = last( from ) - first( from ) == last( to ) - first( to );
    shifted_.all += both;
    if( both && asLong ) {
        shifted_.differing += first( from ) != first( to );
        return;
    }
    addIfOther( pair.record.fields, { "hitBitSmashOffset", first( from ) },
                { "hitBitSmashOffset", first( to ) } );
    addIfOther( pair.record.fields, { "hitBitSmashLast", last( from ) }, { "hitBitSmashLast", last( to ) } );
}

/// The same record, or the same number when neither configuration knows a name.
bool FieldComparer::standForTheSame( ComparedPrograms const& programs, Value const& old,
                                     Value const& now ) const {
    Hex const from = std::get<Hex>( old.is );
    Hex const to = std::get<Hex>( now.is );
    String const* const a = old_.nameOf( programs.old, from );
    String const* const b = now_.nameOf( programs.now, to );
    return a && b ? programs.renames.of( *a ) == *b : !a && !b && from.value == to.value;
}

void FieldComparer::countReference( ComparedPrograms const& programs, Value const& old, Value const& now ) {
    Hex const from = std::get<Hex>( old.is );
    String const* const name = old_.nameOf( programs.old, from );
    count( programs,
           { { Kind::handles, name ? *name : "", {} }, from.value, std::get<Hex>( now.is ).value, 0 } );
}

/// References to a record may be counted before the record itself.
void FieldComparer::count( ComparedPrograms const& programs, Renumbering const& handle ) {
    if( handle.from == 0 && handle.to == 0 )
        return;
    bool const isOther = handle.from != handle.to;
    handles_[ std::uint64_t{ programs.pipes } << 32 | handle.from ] |= isOther;
    if( !isOther )
        return;
    auto const [ known, isNew ] =
        renumbered_.try_emplace( { programs.pipes, handle.from, handle.label() }, handle );
    known->second.pipes = programs.pipes;
    if( !isNew && known->second.kind == Kind::handles )
        known->second.kind = handle.kind;
}

} // namespace Bfri
