#include "inspect/check/Checked.h"

#include "inspect/check/Baseline.h"
#include "inspect/model/Codes.h"

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

/// Codes from another version of this program may be unknown.
Row resultRow( String const& code, String message, Row location, char const* baselineState ) {
    FindingKind const* const kind = codedAs( findingKinds(), code );
    Row row{ { "ruleId", code } };
    if( kind )
        row.push_back( { "ruleIndex", static_cast<U32>( kind - findingKinds().data() ) } );
    row.push_back( { "level", levelOf( kind ? kind->severity : Severity::note ) } );
    row.push_back( { "message", textRow( std::move( message ) ) } );
    row.push_back( { "locations", List{ std::move( location ) } } );
    if( baselineState )
        row.push_back( { "baselineState", baselineState } );
    return row;
}

Row findingRow( Finding const& finding, String const& switchConf, bool hasBaseline ) {
    Row const logical{ { "name", finding.name }, { "kind", finding.what } };
    Row row = resultRow( finding.kind->code, finding.message(),
                         { { "physicalLocation", physicalRow( finding, switchConf ) },
                           { "logicalLocations", List{ logical } } },
                         !hasBaseline      ? nullptr
                         : finding.isKnown ? "unchanged"
                                           : "new" );
    Row const fingerprint{
        { "bfriFinding/v1", String( finding.kind->code ) + '/' + finding.what + '/' + finding.name } };
    row.insert( row.begin() + 5, { "partialFingerprints", fingerprint } );
    return row;
}

Value goneRow( KnownFinding const& known ) {
    return resultRow( known.code, known.message, { { "physicalLocation", fileRow( known.switchConf ) } },
                      "absent" );
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
