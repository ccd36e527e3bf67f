#include "inspect/diff/FieldComparer.h"

#include "inspect/diff/Join.h"

namespace Bfri {

namespace {

/// What the values of a field are, where they are not just compared.
enum class Meaning { plain, ownHandle, reference, references, stage, stages, firstHitBit, lastHitBit };

constexpr std::pair<std::string_view, Meaning> meanings[] = {
    { "handle", Meaning::ownHandle },
    { "ownHandle", Meaning::ownHandle },
    { "tableHdl", Meaning::ownHandle },
    { "fieldListHdl", Meaning::ownHandle },
    { "adtHandle", Meaning::reference },
    { "selHandle", Meaning::reference },
    { "statReferences", Meaning::references },
    { "meterReferences", Meaning::references },
    { "statefulReferences", Meaning::references },
    { "stageStart", Meaning::stage },
    { "stageNumbers", Meaning::stages },
    { "hitBitSmashOffset", Meaning::firstHitBit },
    { "hitBitSmashLast", Meaning::lastHitBit },
};

Meaning meaningOf( std::string_view field ) {
    for( auto const& [ name, meaning ] : meanings ) {
        if( name == field )
            return meaning;
    }
    return Meaning::plain;
}

bool has( Row const& row, std::string_view flag, bool value ) {
    bool const* const is = std::get_if<bool>( &valueOf( row, flag ).is );
    return is && *is == value;
}

/// Direct counters and their like bear the handle of their match table.
bool bearsItsTablesHandle( Row const& row ) {
    return has( row, "direct", true ) || has( row, "indirect", false );
}

Renumbering ownHandle( RecordKind const& kind, Row const& row, Value const& old, Value const& now ) {
    Identity const identity( row );
    return { kind.kind, identity.name, identity.table ? std::optional( *identity.table ) : std::nullopt,
             std::get<Hex>( old.is ).value, std::get<Hex>( now.is ).value };
}

void addIfOther( std::vector<Change>& changes, Field const& from, Field const& to ) {
    if( !same( from.value, to.value ) )
        changes.push_back( { from.name, from.value, to.value } );
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

Referents::Referents( BfResourceInfo::BfResourceParser const& parser ) : parser_( parser ) {
    for( BfTableInfo const& table : parser.bfTables() )
        unplaced_.try_emplace( table.handle, &table.name );
}

String const* Referents::nameOf( Hex handle ) const {
    if( auto const* const placed = parser_.resourceHandles().find( handle.value ) )
        return &placed->name;
    auto const table = unplaced_.find( handle.value );
    return table == unplaced_.end() ? nullptr : table->second;
}

Value Referents::standsFor( Hex handle ) const {
    String const* const name = nameOf( handle );
    if( handle.value == 0 && !name )
        return {};
    return Row{ { "handle", handle }, { "name", name ? Value( *name ) : Value() } };
}

List Referents::standFor( List const& handles ) const {
    return listOf( handles,
                   [ & ]( Value const& handle ) { return standsFor( std::get<Hex>( handle.is ) ); } );
}

FieldComparer::FieldComparer( Configuration const& old, Configuration const& now )
    : old_( old.parser() ), now_( now.parser() ) {}

ChangedRecord FieldComparer::compare( RecordKind const& kind, Row const& from, Row const& to ) {
    ChangedRecord record;
    for( std::size_t i = 0; i < from.size(); ++i ) {
        switch( meaningOf( from[ i ].name ) ) {
        case Meaning::plain:
            addIfOther( record.fields, from[ i ], to[ i ] );
            break;
        case Meaning::ownHandle:
            if( bearsItsTablesHandle( from ) || bearsItsTablesHandle( to ) )
                compareReference( record, from[ i ], to[ i ] );
            else
                count( ownHandle( kind, from, from[ i ].value, to[ i ].value ) );
            break;
        case Meaning::reference:
            compareReference( record, from[ i ], to[ i ] );
            break;
        case Meaning::references:
            compareReferences( record, from[ i ], to[ i ] );
            break;
        case Meaning::stage:
            if( haveMoved( from, to ) )
                record.move = { from[ i ].name, from[ i ].value, to[ i ].value };
            else
                addIfOther( record.fields, from[ i ], to[ i ] );
            break;
        case Meaning::stages: // behind the first
            if( !record.move )
                addIfOther( record.fields, from[ i ], to[ i ] );
            break;
        case Meaning::firstHitBit:
            compareHitBits( record, from, to );
            break;
        case Meaning::lastHitBit: // went with the first
            break;
        }
    }
    return record;
}

Tally FieldComparer::handles() const {
    std::map<U32, bool> isOther;
    for( auto const& [ key, handle ] : handles_ )
        isOther[ handle.from ] |= handle.from != handle.to;
    Tally tally{ 0, isOther.size() };
    for( auto const& [ number, other ] : isOther )
        tally.differing += other;
    return tally;
}

std::vector<Renumbering> FieldComparer::renumbered() const {
    std::vector<Renumbering> others;
    for( auto const& [ key, handle ] : handles_ ) {
        if( handle.from != handle.to )
            others.push_back( handle );
    }
    return others;
}

void FieldComparer::compareReference( ChangedRecord& record, Field const& from, Field const& to ) {
    if( standForTheSame( from.value, to.value ) )
        countReference( from.value, to.value );
    else
        record.fields.push_back( { from.name, old_.standsFor( std::get<Hex>( from.value.is ) ),
                                   now_.standsFor( std::get<Hex>( to.value.is ) ) } );
}

void FieldComparer::compareReferences( ChangedRecord& record, Field const& from, Field const& to ) {
    List const& old = std::get<List>( from.value.is );
    List const& now = std::get<List>( to.value.is );
    bool const alike = std::equal( old.begin(), old.end(), now.begin(), now.end(),
                                   [ & ]( auto& a, auto& b ) { return standForTheSame( a, b ); } );
    if( !alike )
        record.fields.push_back( { from.name, old_.standFor( old ), now_.standFor( now ) } );
    for( std::size_t i = 0; alike && i < old.size(); ++i )
        countReference( old[ i ], now[ i ] );
}

void FieldComparer::compareHitBits( ChangedRecord& record, Row const& from, Row const& to ) {
    auto const first = []( Row const& row ) { return valueAs<U32>( row, "hitBitSmashOffset" ); };
    auto const last = []( Row const& row ) { return valueAs<U32>( row, "hitBitSmashLast" ); };
    bool const both = has( from, "hitBitSupported", true ) && has( to, "hitBitSupported", true );
    bool const asLong = last( from ) - first( from ) == last( to ) - first( to );
    shifted_.all += both;
    if( both && asLong ) {
        shifted_.differing += first( from ) != first( to );
    } else {
        addIfOther( record.fields, { "hitBitSmashOffset", first( from ) },
                    { "hitBitSmashOffset", first( to ) } );
        addIfOther( record.fields, { "hitBitSmashLast", last( from ) }, { "hitBitSmashLast", last( to ) } );
    }
}

/// The same name, or the same number when neither model knows a name.
bool FieldComparer::standForTheSame( Value const& old, Value const& now ) const {
    Hex const from = std::get<Hex>( old.is );
    Hex const to = std::get<Hex>( now.is );
    String const* const a = old_.nameOf( from );
    String const* const b = now_.nameOf( to );
    return a && b ? *a == *b : !a && !b && from.value == to.value;
}

void FieldComparer::countReference( Value const& old, Value const& now ) {
    Hex const from = std::get<Hex>( old.is );
    String const* const name = old_.nameOf( from );
    count( { Kind::handles, name ? *name : "", {}, from.value, std::get<Hex>( now.is ).value } );
}

/// What references a record may come before it does.
void FieldComparer::count( Renumbering const& handle ) {
    if( handle.from == 0 && handle.to == 0 )
        return;
    auto const [ known, isNew ] = handles_.try_emplace( { handle.from, handle.label() }, handle );
    if( !isNew && known->second.kind == Kind::handles )
        known->second.kind = handle.kind;
}

} // namespace Bfri
