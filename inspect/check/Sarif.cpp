#include "inspect/check/Sarif.h"

#include <algorithm>
#include <fmt/format.h>

namespace Bfri {

namespace {

char const* levelOf( Severity severity ) { return wordOf( severity ); } // SARIF has the same words

/// A path as a reference of a URI; an absolute one as a URI.
String uriOf( String const& path ) {
    String uri = path.starts_with( '/' ) ? "file://" : "";
    for( char const c : path ) {
        bool const isPlain = ( c >= 'a' && c <= 'z' ) || ( c >= 'A' && c <= 'Z' ) ||
                             ( c >= '0' && c <= '9' ) || String( "-._~/" ).find( c ) != String::npos;
        uri += isPlain ? String( 1, c ) : fmt::format( "%{:02X}", static_cast<unsigned char>( c ) );
    }
    return uri;
}

Row textRow( String text ) { return { { "text", std::move( text ) } }; }

Value ruleRow( FindingKind const& kind ) {
    return Row{ { "id", kind.code },
                { "name", kind.title },
                { "shortDescription", textRow( kind.title ) },
                { "fullDescription", textRow( kind.meaning ) },
                { "help", textRow( String( kind.matters ) + ' ' + kind.advice ) },
                { "defaultConfiguration", Row{ { "level", levelOf( kind.severity ) } } } };
}

Row fileRow( String const& path ) { return { { "artifactLocation", Row{ { "uri", uriOf( path ) } } } }; }

Row physicalRow( Finding const& finding, String const& switchConf ) {
    if( !finding.place )
        return fileRow( finding.contextFile.empty() ? switchConf : finding.contextFile );
    Row row = fileRow( finding.place->file );
    row.push_back( { "region", Row{ { "startLine", finding.place->at.line },
                                    { "startColumn", finding.place->at.column } } } );
    return row;
}

/// Rules are by ascending code.
U32 ruleIndexOf( String const& code ) {
    auto const rules = findingKinds();
    auto const found = std::find_if( rules.begin(), rules.end(),
                                     [ & ]( FindingKind const& kind ) { return kind.code == code; } );
    return static_cast<U32>( found - rules.begin() );
}

Row resultRow( String const& code, Severity severity, String message, List locations ) {
    return { { "ruleId", code },
             { "ruleIndex", ruleIndexOf( code ) },
             { "level", levelOf( severity ) },
             { "message", textRow( std::move( message ) ) },
             { "locations", std::move( locations ) } };
}

Row findingRow( Finding const& finding, String const& switchConf, bool hasBaseline ) {
    Row const logical{ { "name", finding.name }, { "kind", finding.what } };
    Row row = resultRow( finding.kind->code, finding.kind->severity, finding.message(),
                         { Row{ { "physicalLocation", physicalRow( finding, switchConf ) },
                                { "logicalLocations", List{ logical } } } } );
    row.push_back( { "partialFingerprints",
                     Row{ { "bfriFinding/v1",
                            String( finding.kind->code ) + '/' + finding.what + '/' + finding.name } } } );
    if( hasBaseline )
        row.push_back( { "baselineState", finding.isKnown ? "unchanged" : "new" } );
    return row;
}

/// Codes from another version of this program may be unknown.
Value goneRow( KnownFinding const& known ) {
    FindingKind const* const kind = findingKindOf( known.code );
    Row row = resultRow( known.code, kind ? kind->severity : Severity::note, known.message,
                         { Row{ { "physicalLocation", fileRow( known.switchConf ) } } } );
    if( !kind )
        std::erase_if( row, []( Field const& field ) { return field.name == "ruleIndex"; } );
    row.push_back( { "baselineState", "absent" } );
    return row;
}

Value notificationRow( Fault const& fault ) {
    Row location = fileRow( fault.file );
    if( fault.line ) {
        Row region{ { "startLine", *fault.line } };
        if( fault.column )
            region.push_back( { "startColumn", *fault.column } );
        location.push_back( { "region", std::move( region ) } );
    }
    return Row{ { "level", "error" },
                { "message", textRow( sentenceOf( fault ) ) },
                { "locations", List{ Row{ { "physicalLocation", std::move( location ) } } } } };
}

} // namespace

Row sarifOf( std::vector<Checked> const& checked, char const* version,
             std::vector<KnownFinding> const* gone ) {
    List results;
    List notifications;
    for( Checked const& one : checked ) {
        if( one.fault )
            notifications.push_back( notificationRow( *one.fault ) );
        for( Finding const& finding : one.findings )
            results.push_back( findingRow( finding, one.switchConf, gone != nullptr ) );
    }
    for( std::size_t i = 0; gone && i < gone->size(); ++i )
        results.push_back( goneRow( ( *gone )[ i ] ) );
    Row const driver{
        { "name", "bfri" }, { "version", version }, { "rules", listOf( findingKinds(), ruleRow ) } };
    Row const invocation{ { "executionSuccessful", notifications.empty() },
                          { "toolExecutionNotifications", std::move( notifications ) } };
    Row const run{ { "tool", Row{ { "driver", driver } } },
                   { "invocations", List{ invocation } },
                   { "columnKind", "unicodeCodePoints" },
                   { "results", std::move( results ) } };
    return { { "version", "2.1.0" },
             { "$schema", "https://json.schemastore.org/sarif-2.1.0.json" },
             { "runs", List{ run } } };
}

} // namespace Bfri
