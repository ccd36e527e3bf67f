#include "inspect/page/Page.h"

#include "inspect/model/Relations.h"

#include <iterator>

namespace Bfri {

namespace {

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

U32 handleOf( Row const& record ) { return valueAs<Hex>( record, "handle" ).value; }

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

    std::vector<Section> page() && {
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

  private:
    Section tables() {
        Section section{ &kindOf( Kind::tables ), {} };
        for( BfTableInfo const& record : parser_.bfTables() ) {
            if( record.name != name_ || !isAsked( record.handle ) )
                continue;
            joined_.insert( relations_.placeOf( record.handle, record.name ) );
            addIfRoom( section, [ & ] { return tableEntry( record ); } );
        }
        return section;
    }

    Section attached( Attachment const& attachment ) {
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

    Section actions() {
        Section section{ &kindOf( Kind::actions ), {} };
        for( BfActionInfo const& record : parser_.bfActions() ) {
            if( record.name == name_ && isAsked( record.handle ) )
                section.entries.push_back(
                    { .record = rowOf( record ),
                      .parts = { ownersPart( tablesNamed( record.tableName, record.handle ) ) } } );
        }
        return section;
    }

    Section others( RecordKind const& kind ) {
        Section section{ &kind, {} };
        for( Row& record : rowsOfName( kind ) ) {
            if( isAsked( record ) )
                addIfRoom( section, [ & ] { return Entry{ .record = std::move( record ) }; } );
        }
        return section;
    }

    Section resources() {
        Section section{ &kindOf( Kind::resources ), {} };
        for( BfResource const& record : parser_.bfResources() ) {
            if( record.name == name_ && isAsked( record.handle ) && joined_.count( &record ) == 0 )
                addIfRoom( section, [ & ] { return resourceEntry( record ); } );
        }
        return section;
    }

    Entry tableEntry( BfTableInfo const& record ) {
        BfResource const* const place = relations_.placeOf( record.handle, record.name );
        Resources taken;
        addOnce( taken, place );
        addOnce( taken, relations_.placeOf( record.adtHandle, record.adtName ) );
        addOnce( taken, relations_.placeOf( record.selHandle, record.selName ) );
        auto parts = attachmentsOf( record, taken );
        parts.insert( parts.begin(), resourcesPart( taken ) );
        parts.push_back( actionsOf( record ) );
        return { rowOf( record ), true, place, std::move( parts ) };
    }

    Entry attachedEntry( Attachment const& attachment, Row const& record ) {
        Resources taken;
        addOnce( taken, placeOf( attachment, record ) );
        std::vector<Row> owners;
        for( auto const* const entry : sortedByKey( parser_.resourceHandles() ) ) {
            if( relations_.belongs( attachment, record, entry->second ) )
                owners.push_back( tableRow( entry->second ) );
        }
        BfResource const* const place = taken.empty() ? nullptr : taken.front();
        auto const handle =
            place ? std::optional( place->handle ) : omitted_.ownHandle( name_, handleOf( record ) );
        return { record,
                 true,
                 place,
                 { resourcesPart( taken ), ownersPart( std::move( owners ) ) },
                 handle ? omitted_.of( *handle, name_ ) : Omissions() };
    }

    Entry resourceEntry( BfResource const& record ) {
        Resources taken;
        auto parts = attachmentsOf( record, taken );
        parts.insert( parts.begin(), resourcesPart( taken ) );
        parts.insert( parts.begin(), ownersPart( tablesUsing( record ), whyNoOwners( record ) ) );
        Row row = rowOf( record );
        row.push_back( { "severalParents", parser_.multipleParentTablesHas( name_ ) } );
        return { std::move( row ), false, nullptr, std::move( parts ), omitted_.of( record.handle, name_ ) };
    }

    Part actionsOf( BfTableInfo const& record ) {
        Part part{ Kind::actions };
        for( BfActionInfo const& action : parser_.bfActions() ) {
            if( action.tableName == record.name && relations_.sameFile( action.handle, record.handle ) )
                part.rows.push_back( rowOf( action ) );
        }
        return part;
    }

    /// What belongs to a table if it is placed: a part for every kind. Their places are added to the
    /// resources.
    template<class Table>
    std::vector<Part> attachmentsOf( Table const& table, Resources& resources ) {
        BfZelResource const* const placed = parser_.resourceHandles().find( table.handle );
        std::vector<Part> parts;
        for( Attachment const& attachment : attachments() ) {
            Part& part = parts.emplace_back( Part{ attachment.kind } );
            if( !placed || placed->name != table.name )
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

    bool isAsked( U32 handle ) const { return !handle_ || *handle_ == handle; }

    /// By any of its handles.
    bool isAsked( Row const& record ) const {
        return !handle_ || std::any_of( record.begin(), record.end(), [ & ]( Field const& field ) {
            auto const* const handle = std::get_if<Hex>( &field.value.is );
            return handle && handle->value == *handle_;
        } );
    }

    BfResource const* placeOf( Attachment const& attachment, Row const& record ) const {
        return relations_.placeOf( attachment.type, handleOf( record ), valueAs<String>( record, "name" ) );
    }

    /// A table that something belongs to.
    template<class Table>
    Row tableRow( Table const& table ) const {
        BfResource const* const place = relations_.placeOf( table.handle, table.name );
        return { { "handle", Hex( table.handle ) },
                 { "name", table.name },
                 { "size", table.size },
                 { "stageStart", place ? Value( place->stageStart ) : Value() },
                 { "stages", place ? Value( place->stages ) : Value() } };
    }

    std::vector<Row> tablesUsing( BfResource const& resource ) const {
        std::vector<Row> tables;
        for( BfTableInfo const& table : parser_.bfTables() ) {
            if( Relations::uses( table, resource ) )
                tables.push_back( tableRow( table ) );
        }
        String const* const parent = parser_.parentTable().find( resource.name );
        return parent && tables.empty() ? tablesNamed( *parent, resource.handle ) : tables;
    }

    std::vector<Row> tablesNamed( String const& name, U32 handleInFile ) const {
        if( auto const* const table = relations_.firstInFile( parser_.bfTables(), handleInFile, name ) )
            return { tableRow( *table ) };
        if( auto const* const resource = relations_.firstInFile( parser_.bfResources(), handleInFile, name ) )
            return { tableRow( *resource ) };
        return {};
    }

    std::vector<Row> const& rows( RecordKind const& kind ) {
        auto const [ found, fresh ] = rows_.try_emplace( &kind );
        if( fresh )
            found->second = kind.rows( parser_ );
        return found->second;
    }

    std::vector<Row> rowsOfName( RecordKind const& kind ) {
        std::vector<Row> chosen;
        for( Row const& row : rows( kind ) ) {
            if( valueAs<String>( row, "name" ) == name_ )
                chosen.push_back( row );
        }
        return chosen;
    }

    BfResourceParser const& parser_;
    String const& name_;
    std::optional<U32> const handle_;
    Relations const relations_{ parser_ };
    std::set<BfResource const*> joined_; // those that an entry says the place of
    std::map<RecordKind const*, std::vector<Row>> rows_;
    OmittedTables const omitted_;
};

} // namespace

Page pageOf( Configuration const& configuration, String const& name, std::optional<U32> handle ) {
    return { name, PageBuilder( configuration, name, handle ).page() };
}

namespace {

List listOfRows( std::vector<Row> rows ) {
    return { std::move_iterator( rows.begin() ), std::move_iterator( rows.end() ) };
}

/// Every field of the record, and its parts after them.
Row entryRow( Entry entry ) {
    Row row = std::move( entry.record );
    if( entry.placeable )
        row.push_back( { "placed", entry.place != nullptr } );
    for( Part& part : entry.parts )
        row.push_back( { kindOf( part.kind ).many, listOfRows( std::move( part.rows ) ) } );
    if( !entry.omitted.empty() )
        row.push_back( { "omitted", valuesOf( entry.omitted ) } );
    return row;
}

} // namespace

/// The records of a kind are together, whatever their names.
Row rowOf( std::vector<Page> pages ) {
    Row row{ { "name", pages.size() == 1 ? Value( pages.front().name ) : Value() } };
    Row moreRecords;
    for( RecordKind const& kind : recordKinds() ) {
        List entries;
        std::size_t more = 0;
        for( Page& page : pages ) {
            auto const section = std::find_if( page.sections.begin(), page.sections.end(),
                                               [ & ]( Section const& one ) { return one.kind == &kind; } );
            if( section == page.sections.end() )
                continue;
            for( Entry& entry : section->entries )
                entries.emplace_back( entryRow( std::move( entry ) ) );
            more += section->moreRecords;
        }
        if( !entries.empty() )
            row.push_back( { kind.member, std::move( entries ) } );
        if( more > 0 )
            moreRecords.push_back( { kind.member, static_cast<U32>( more ) } );
    }
    if( !moreRecords.empty() )
        row.push_back( { "moreRecords", std::move( moreRecords ) } );
    return row;
}

} // namespace Bfri
