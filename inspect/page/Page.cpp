#include "inspect/page/Page.h"

#include "inspect/model/Relations.h"

namespace Bfri {

namespace {

using BfResourceInfo::BfResourceParser;
using Resources = std::vector<BfResource const*>;

Part resourcesPart( Resources const& resources ) {
    Part part{ Kind::resources };
    for( BfResource const* const resource : resources )
        part.rows.push_back( rowOf( *resource ) );
    return part;
}

Part ownersPart( std::vector<Row> rows, WhyNone whyNone = WhyNone::unknown ) {
    return { Kind::tables, true, std::move( rows ), whyNone };
}

/// A match table belongs to none.
WhyNone whyNoOwners( BfResource const& resource ) {
    constexpr U32 actionData = static_cast<U32>( BfResourceType::actionData );
    if( resource.type < actionData )
        return WhyNone::nothing;
    return resource.type == actionData ? WhyNone::onlyIndirectActionData : WhyNone::unknown;
}

/// A name usually has one entry per context file, and few switches have more files than this. All entries of
/// one file have the same parts by name, so many entries would repeat each other.
constexpr std::size_t mostEntries = 8;

template<class Make>
void addIfRoom( Section& section, Make entry ) {
    if( section.entries.size() < mostEntries )
        section.entries.push_back( entry() );
    else
        ++section.moreRecords;
}

void addOnce( Resources& resources, BfResource const* resource ) {
    if( resource && std::find( resources.begin(), resources.end(), resource ) == resources.end() )
        resources.push_back( resource );
}

class PageBuilder {
  public:
    PageBuilder( Configuration const& configuration, String const& name, std::optional<U32> handle )
        : parser_( configuration.parser() ), name_( name ), handle_( handle ), omitted_( configuration ) {}

    std::vector<Section> page() &&;

  private:
    Section tables();
    Section attached( Attachment const& attachment );
    Section actions();
    Section others( RecordKind const& kind );
    Section resources();

    Entry tableEntry( BfTableInfo const& record );
    Entry attachedEntry( Attachment const& attachment, Row const& record );
    Entry resourceEntry( BfResource const& record );
    Part actionsOf( BfTableInfo const& record );
    /// What belongs to a placed table: a part for every kind. Their places are added to the resources.
    std::vector<Part> attachmentsOf( BfZelResource const* placed, Resources& resources );

    bool isAsked( U32 handle ) const { return !handle_ || *handle_ == handle; }
    bool isAsked( Row const& record ) const;

    BfZelResource const* placed( U32 handle, String const& name ) const;
    BfResource const* placeOf( Attachment const& attachment, Row const& record ) const;
    /// A table that something belongs to.
    Row tableRow( U32 handle, String const& name, U32 size ) const;
    /// A resource that belongs to tables, and whether it has too many parents for the model to know one.
    Row withParents( Row record ) const;
    std::vector<Row> tablesUsing( BfResource const& resource ) const;
    std::vector<Row> tablesNamed( String const& name, U32 handleInFile ) const;
    /// The first record of a name in the file that a handle is of.
    template<class Record>
    Record const* firstNamed( BfResourceInfo::RecordSequence<Record> const& all, String const& name,
                              U32 handleInFile ) const;
    std::vector<Row> const& rows( RecordKind const& kind );
    std::vector<Row> rowsOfName( RecordKind const& kind );

    BfResourceParser const& parser_;
    String const& name_;
    std::optional<U32> const handle_;
    Relations const relations_{ parser_ };
    std::set<BfResource const*> joined_; // those that an entry says the place of
    std::map<RecordKind const*, std::vector<Row>> rows_;
    OmittedTables const omitted_;
};

std::vector<Section> PageBuilder::page() && {
    std::vector<Section> sections;
    for( RecordKind const& kind : recordKinds() ) {
        if( kind.attachment )
            sections.push_back( attached( *kind.attachment ) );
        else if( kind.kind == Kind::tables )
            sections.push_back( tables() );
        else if( kind.kind == Kind::actions )
            sections.push_back( actions() );
        else if( kind.kind != Kind::resources && kind.kind != Kind::handles )
            sections.push_back( others( kind ) );
    }
    sections.push_back( resources() ); // only now is known which ones have no place in another entry
    std::erase_if( sections, []( Section const& section ) { return section.entries.empty(); } );
    std::sort( sections.begin(), sections.end(),
               []( Section const& a, Section const& b ) { return a.kind < b.kind; } );
    return sections;
}

Section PageBuilder::tables() {
    Section section{ &kindOf( Kind::tables ), {} };
    for( BfTableInfo const& record : parser_.bfTables() ) {
        if( record.name != name_ || !isAsked( record.handle ) )
            continue;
        joined_.insert( relations_.placeOf( record.handle, record.name ) );
        addIfRoom( section, [ & ] { return tableEntry( record ); } );
    }
    return section;
}

Section PageBuilder::attached( Attachment const& attachment ) {
    Section section{ &kindOf( attachment.kind ), {} };
    for( Row const& record : rowsOfName( *section.kind ) ) {
        BfResource const* const place = placeOf( attachment, record );
        if( !isAsked( record ) && !( place && isAsked( place->handle ) ) )
            continue;
        joined_.insert( place );
        addIfRoom( section, [ & ] { return attachedEntry( attachment, record ); } );
    }
    return section;
}

Section PageBuilder::actions() {
    Section section{ &kindOf( Kind::actions ), {} };
    for( BfActionInfo const& record : parser_.bfActions() ) {
        if( record.name == name_ && isAsked( record.handle ) )
            section.entries.push_back(
                { .record = rowOf( record ),
                  .parts = { ownersPart( tablesNamed( record.tableName, record.handle ) ) } } );
    }
    return section;
}

Section PageBuilder::others( RecordKind const& kind ) {
    Section section{ &kind, {} };
    for( Row& record : rowsOfName( kind ) ) {
        if( isAsked( record ) )
            addIfRoom( section, [ & ] { return Entry{ .record = std::move( record ) }; } );
    }
    return section;
}

Section PageBuilder::resources() {
    Section section{ &kindOf( Kind::resources ), {} };
    for( BfResource const& record : parser_.bfResources() ) {
        if( record.name == name_ && isAsked( record.handle ) && joined_.count( &record ) == 0 )
            addIfRoom( section, [ & ] { return resourceEntry( record ); } );
    }
    return section;
}

Entry PageBuilder::tableEntry( BfTableInfo const& record ) {
    BfResource const* const place = relations_.placeOf( record.handle, record.name );
    Resources taken;
    addOnce( taken, place );
    addOnce( taken, relations_.placeOf( record.adtHandle, record.adtName ) );
    addOnce( taken, relations_.placeOf( record.selHandle, record.selName ) );
    auto attached = attachmentsOf( placed( record.handle, record.name ), taken );
    Entry entry{ rowOf( record ), true, place, { resourcesPart( taken ) } };
    std::move( attached.begin(), attached.end(), std::back_inserter( entry.parts ) );
    entry.parts.push_back( actionsOf( record ) );
    return entry;
}

Entry PageBuilder::attachedEntry( Attachment const& attachment, Row const& record ) {
    Resources taken;
    addOnce( taken, placeOf( attachment, record ) );
    std::vector<Row> owners;
    for( auto const* const entry : sortedByKey( parser_.resourceHandles() ) ) {
        BfZelResource const& table = entry->second;
        if( relations_.belongs( attachment, record, table ) )
            owners.push_back( tableRow( table.handle, table.name, table.size ) );
    }
    BfResource const* const place = taken.empty() ? nullptr : taken.front();
    auto const handle = place ? std::optional( place->handle )
                              : omitted_.ownHandle( name_, valueAs<Hex>( record, "handle" ).value );
    return { record,
             true,
             place,
             { resourcesPart( taken ), ownersPart( std::move( owners ) ) },
             handle ? omitted_.of( *handle, name_ ) : Omissions() };
}

Entry PageBuilder::resourceEntry( BfResource const& record ) {
    Resources taken;
    auto attached = attachmentsOf( placed( record.handle, record.name ), taken );
    auto owners = tablesUsing( record );
    Entry entry{ withParents( rowOf( record ) ),
                 false,
                 nullptr,
                 { ownersPart( std::move( owners ), whyNoOwners( record ) ), resourcesPart( taken ) },
                 omitted_.of( record.handle, name_ ) };
    std::move( attached.begin(), attached.end(), std::back_inserter( entry.parts ) );
    return entry;
}

Part PageBuilder::actionsOf( BfTableInfo const& record ) {
    Part part{ Kind::actions };
    for( BfActionInfo const& action : parser_.bfActions() ) {
        if( action.tableName == record.name && relations_.sameFile( action.handle, record.handle ) )
            part.rows.push_back( rowOf( action ) );
    }
    return part;
}

std::vector<Part> PageBuilder::attachmentsOf( BfZelResource const* placed, Resources& resources ) {
    std::vector<Part> parts;
    for( Attachment const& attachment : attachments() ) {
        Part& part = parts.emplace_back( Part{ attachment.kind } );
        if( !placed )
            continue;
        for( Row const& record : rows( kindOf( attachment.kind ) ) ) {
            if( !relations_.belongs( attachment, record, *placed ) )
                continue;
            part.rows.push_back( record );
            addOnce( resources, placeOf( attachment, record ) );
        }
    }
    return parts;
}

/// By any of its handles.
bool PageBuilder::isAsked( Row const& record ) const {
    return !handle_ || std::any_of( record.begin(), record.end(), [ & ]( Field const& field ) {
        auto const* const handle = std::get_if<Hex>( &field.value.is );
        return handle && handle->value == *handle_;
    } );
}

BfZelResource const* PageBuilder::placed( U32 handle, String const& name ) const {
    BfZelResource const* const entry = parser_.resourceHandles().find( handle );
    return entry && entry->name == name ? entry : nullptr;
}

BfResource const* PageBuilder::placeOf( Attachment const& attachment, Row const& record ) const {
    String const& name = valueAs<String>( record, "name" );
    U32 const handle = valueAs<Hex>( record, "handle" ).value;
    auto const& all = parser_.bfResources();
    for( U32 i = all.first<BfByName<BfResource>>( name ); i < all.size(); ++i ) {
        BfResource const& resource = all.at( i );
        if( resource.name == name && resource.type == static_cast<U32>( attachment.type ) &&
            relations_.sameFile( resource.handle, handle ) )
            return &resource;
    }
    return nullptr;
}

Row PageBuilder::tableRow( U32 handle, String const& name, U32 size ) const {
    BfResource const* const place = relations_.placeOf( handle, name );
    return { { "handle", Hex( handle ) },
             { "name", name },
             { "size", size },
             { "stageStart", place ? Value( place->stageStart ) : Value() },
             { "stages", place ? Value( place->stages ) : Value() } };
}

Row PageBuilder::withParents( Row record ) const {
    record.push_back( { "severalParents", parser_.multipleParentTablesHas( name_ ) } );
    return record;
}

std::vector<Row> PageBuilder::tablesUsing( BfResource const& resource ) const {
    std::vector<Row> tables;
    for( BfTableInfo const& table : parser_.bfTables() ) {
        if( Relations::uses( table, resource ) )
            tables.push_back( tableRow( table.handle, table.name, table.size ) );
    }
    String const* const parent = parser_.parentTable().find( resource.name );
    return parent && tables.empty() ? tablesNamed( *parent, resource.handle ) : tables;
}

std::vector<Row> PageBuilder::tablesNamed( String const& name, U32 handleInFile ) const {
    if( auto const* const table = firstNamed( parser_.bfTables(), name, handleInFile ) )
        return { tableRow( table->handle, name, table->size ) };
    if( auto const* const resource = firstNamed( parser_.bfResources(), name, handleInFile ) )
        return { tableRow( resource->handle, name, resource->size ) };
    return {};
}

template<class Record>
Record const* PageBuilder::firstNamed( BfResourceInfo::RecordSequence<Record> const& all, String const& name,
                                       U32 handleInFile ) const {
    for( U32 i = all.template first<BfByName<Record>>( name ); i < all.size(); ++i ) {
        if( all.at( i ).name == name && relations_.sameFile( all.at( i ).handle, handleInFile ) )
            return &all.at( i );
    }
    return nullptr;
}

std::vector<Row> const& PageBuilder::rows( RecordKind const& kind ) {
    auto const [ found, fresh ] = rows_.try_emplace( &kind );
    if( fresh )
        found->second = kind.rows( parser_ );
    return found->second;
}

std::vector<Row> PageBuilder::rowsOfName( RecordKind const& kind ) {
    std::vector<Row> chosen;
    for( Row const& row : rows( kind ) ) {
        if( valueAs<String>( row, "name" ) == name_ )
            chosen.push_back( row );
    }
    return chosen;
}

} // namespace

Page pageOf( Configuration const& configuration, String const& name, std::optional<U32> handle ) {
    return { name, PageBuilder( configuration, name, handle ).page() };
}

} // namespace Bfri
