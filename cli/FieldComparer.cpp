#include "cli/FieldComparer.h"

namespace Bfri {

namespace {

/// What the values of a field are, where they are not just compared.
enum class Meaning { plain, ownHandle, reference, references, stage, firstHitBit, lastHitBit };

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

void addIfOther( std::vector<Change>& changes, Field const& from, Field const& to ) {
    if( !same( from.value, to.value ) )
        changes.push_back( { from.name, from.value, to.value } );
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

FieldComparer::FieldComparer( Model const& old, Model const& now )
    : old_( *old.parser() ), now_( *now.parser() ) {}

ChangedRecord FieldComparer::compare( Row const& from, Row const& to ) {
    ChangedRecord record;
    for( std::size_t i = 0; i < from.size(); ++i ) {
        if( from[ i ].name == "typeName" ) // says what "type" says
            continue;
        switch( meaningOf( from[ i ].name ) ) {
        case Meaning::plain:
            addIfOther( record.fields, from[ i ], to[ i ] );
            break;
        case Meaning::ownHandle:
            if( bearsItsTablesHandle( from ) || bearsItsTablesHandle( to ) )
                compareReference( record, from[ i ], to[ i ] );
            else
                count( from[ i ].value, to[ i ].value );
            break;
        case Meaning::reference:
            compareReference( record, from[ i ], to[ i ] );
            break;
        case Meaning::references:
            compareReferences( record, from[ i ], to[ i ] );
            break;
        case Meaning::stage:
            if( !same( from[ i ].value, to[ i ].value ) )
                record.move = { from[ i ].name, from[ i ].value, to[ i ].value };
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

Tally FieldComparer::renumbered() const {
    Tally tally{ 0, handles_.size() };
    for( auto const& [ handle, isOther ] : handles_ )
        tally.differing += isOther;
    return tally;
}

void FieldComparer::compareReference( ChangedRecord& record, Field const& from, Field const& to ) {
    if( standForTheSame( from.value, to.value ) )
        count( from.value, to.value );
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
        count( old[ i ], now[ i ] );
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

void FieldComparer::count( Value const& old, Value const& now ) {
    U32 const from = std::get<Hex>( old.is ).value;
    U32 const to = std::get<Hex>( now.is ).value;
    if( from != 0 || to != 0 )
        handles_[ from ] |= from != to;
}

} // namespace Bfri
