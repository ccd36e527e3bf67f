#include "inspect/check/Checked.h"

#include "inspect/model/RecordKinds.h"

namespace Bfri {

namespace {

Value textOrNothing( String const& text ) { return text.empty() ? Value() : Value( text ); }

Row findingRow( Finding const& finding ) {
    return { { "code", finding.kind->code },
             { "title", finding.kind->title },
             { "severity", wordOf( finding.kind->severity ) },
             { "kind", finding.what },
             { "name", finding.name },
             { "handle", finding.handle ? Value( Hex( *finding.handle ) ) : Value() },
             { "contextFile", textOrNothing( finding.contextFile ) },
             { "file", finding.place ? Value( finding.place->file ) : Value() },
             { "line", finding.place ? Value( finding.place->at.line ) : Value() },
             { "column", finding.place ? Value( finding.place->at.column ) : Value() },
             { "isNew", !finding.isKnown },
             { "message", finding.message() } };
}

Row codeRow( CodeCount const& count ) {
    return { { "code", count.kind->code },
             { "title", count.kind->title },
             { "severity", wordOf( count.kind->severity ) },
             { "findings", static_cast<U32>( count.number ) },
             { "new", static_cast<U32>( count.number - count.known ) } };
}

Row countsRow( std::vector<Count> const& counts ) {
    Row row;
    for( Count const& count : counts )
        row.push_back( { count.collection, static_cast<U32>( count.number ) } );
    return row;
}

} // namespace

Row rowOf( Fault const& fault ) {
    return { { "file", fault.file },
             { "isContextFile", fault.inContextFile },
             { "problem", textOrNothing( fault.problem ) },
             { "line", valueIf( fault.line ) },
             { "column", valueIf( fault.column ) },
             { "excerpt", textOrNothing( fault.excerpt ) },
             { "pointer", valueIf( fault.pointer ) },
             { "member", textOrNothing( fault.member ) },
             { "tableIndex", valueIf( fault.tableIndex ) },
             { "table", textOrNothing( fault.table ) },
             { "expected", textOrNothing( fault.expected ) },
             { "handle", valueIf( fault.handle ) },
             { "found", textOrNothing( fault.found ) },
             { "reported", listOf( fault.reported, []( String const& text ) { return text; } ) },
             { "condition", textOrNothing( fault.condition ) },
             { "function", textOrNothing( fault.function ) },
             { "hint", textOrNothing( fault.hint ) } };
}

std::vector<CodeCount> codeCountsOf( std::vector<Finding> const& findings ) {
    std::vector<CodeCount> counts;
    for( Finding const& finding : findings ) {
        if( counts.empty() || counts.back().kind != finding.kind )
            counts.push_back( { finding.kind } );
        ++counts.back().number;
        counts.back().known += finding.isKnown ? 1 : 0;
    }
    return counts;
}

Row rowOf( Checked const& checked, bool isSummary ) {
    Row row{
        { "switchConf", checked.switchConf },
        { "loads", !checked.fault.has_value() },
        { "failure", checked.fault ? Value( rowOf( *checked.fault ) ) : Value() },
        { "checked", checked.fault ? Value() : Value( countsRow( checked.counts ) ) },
    };
    if( isSummary )
        row.push_back( { "codes", listOf( codeCountsOf( checked.findings ), codeRow ) } );
    else
        row.push_back( { "findings", listOf( checked.findings, findingRow ) } );
    return row;
}

std::vector<Count> countsOf( Configuration const& configuration ) {
    auto const& parser = configuration.parser();
    std::vector<Count> counts{
        { "contextFile", "context file", "context files", parser.contextFile().size() } };
    for( bool const ofTables : { true, false } ) { // match tables and what they have come first
        for( RecordKind const& kind : recordKinds() ) {
            if( kind.isCounted && kind.ofTables == ofTables )
                counts.push_back( { kind.member, kind.noun, kind.nouns, kind.size( parser ) } );
        }
    }
    return counts;
}

} // namespace Bfri
