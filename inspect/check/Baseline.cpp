#include "inspect/check/Baseline.h"

#include "inspect/rows/Utf8.h"

#include <algorithm>
#include <fstream>
#include <rapidjson/document.h>
#include <rapidjson/error/en.h>
#include <rapidjson/istreamwrapper.h>

namespace Bfri {

namespace {

using Json = rapidjson::Value;

/// A member of an object; null where there is none.
Json const* memberOf( Json const& value, char const* name ) {
    if( !value.IsObject() )
        return nullptr;
    auto const found = value.FindMember( name );
    return found == value.MemberEnd() ? nullptr : &found->value;
}

String textOf( Json const& value, char const* name ) {
    Json const* const member = memberOf( value, name );
    return member && member->IsString() ? String( member->GetString(), member->GetStringLength() ) : String();
}

/// The elements of a list; none if there is no list.
std::vector<Json const*> elementsOf( Json const& value, char const* name ) {
    std::vector<Json const*> elements;
    Json const* const list = memberOf( value, name );
    for( rapidjson::SizeType i = 0; list && list->IsArray() && i < list->Size(); ++i )
        elements.push_back( &( *list )[ i ] );
    return elements;
}

bool isAnswer( Json const& document ) {
    Json const* const format = memberOf( document, "format" );
    Json const* const configurations = memberOf( document, "configurations" );
    if( !format || !format->IsUint() || format->GetUint() != 1 || !configurations ||
        !configurations->IsArray() )
        return false;
    auto const all = elementsOf( document, "configurations" );
    return std::all_of( all.begin(), all.end(),
                        []( Json const* one ) { return memberOf( *one, "findings" ) != nullptr; } );
}

/// As a name is in JSON, whatever its bytes are.
String asInJson( String const& text ) {
    rapidjson::Document document;
    document.Parse( jsonQuoted( text ).c_str() );
    return { document.GetString(), document.GetStringLength() };
}

/// A name to know a record by; of a file without its folder.
String nameOf( KnownFinding const& finding ) {
    bool const isPath = finding.name == finding.contextFile || finding.name == finding.switchConf;
    return isPath ? finding.name.substr( finding.name.rfind( '/' ) + 1 ) : finding.name;
}

KnownFinding knownFrom( Finding const& finding, String const& switchConf ) {
    return { finding.kind->code,
             finding.what,
             asInJson( finding.name ),
             asInJson( finding.message() ),
             asInJson( finding.contextFile ),
             asInJson( switchConf ) };
}

} // namespace

Baseline::Baseline( std::vector<KnownFinding> findings )
    : findings_( std::move( findings ) ), taken_( findings_.size() ) {
    for( std::size_t i = 0; i < findings_.size(); ++i )
        byKey_[ { findings_[ i ].code, findings_[ i ].kind, nameOf( findings_[ i ] ) } ].push_back( i );
}

template<class Matches>
bool Baseline::take( Key const& key, Matches matches ) {
    auto const found = byKey_.find( key );
    if( found == byKey_.end() )
        return false;
    for( std::size_t const i : found->second ) {
        if( !taken_[ i ] && matches( findings_[ i ] ) ) {
            taken_[ i ] = true;
            return true;
        }
    }
    return false;
}

void Baseline::mark( std::vector<Finding>& findings, String const& switchConf ) {
    for( bool const withMessage : { true, false } ) {
        for( Finding& finding : findings ) {
            if( finding.isKnown )
                continue;
            KnownFinding const now = knownFrom( finding, switchConf );
            finding.isKnown =
                take( { now.code, now.kind, nameOf( now ) }, [ & ]( KnownFinding const& known ) {
                    return !withMessage || known.message == now.message;
                } );
        }
    }
}

std::vector<KnownFinding> Baseline::gone( std::vector<FindingKind const*> const& ignored ) const {
    std::vector<KnownFinding> all;
    for( std::size_t i = 0; i < findings_.size(); ++i ) {
        bool const isIgnored = std::any_of( ignored.begin(), ignored.end(), [ & ]( FindingKind const* kind ) {
            return kind->code == findings_[ i ].code;
        } );
        if( !taken_[ i ] && !isIgnored )
            all.push_back( findings_[ i ] );
    }
    return all;
}

std::variant<Baseline, String> readBaseline( String const& path ) {
    std::ifstream file( path, std::ios::binary );
    if( !file )
        return String( "can't be read" );
    rapidjson::IStreamWrapper stream( file );
    rapidjson::Document document;
    document.ParseStream<rapidjson::kParseIterativeFlag>( stream );
    if( document.HasParseError() )
        return String( "is not JSON: " ) + rapidjson::GetParseError_En( document.GetParseError() );
    if( !isAnswer( document ) )
        return String( "is not an answer of 'check --json' with its findings" );
    std::vector<KnownFinding> findings;
    for( Json const* const configuration : elementsOf( document, "configurations" ) ) {
        for( Json const* const finding : elementsOf( *configuration, "findings" ) )
            findings.push_back( { textOf( *finding, "code" ), textOf( *finding, "kind" ),
                                  textOf( *finding, "name" ), textOf( *finding, "message" ),
                                  textOf( *finding, "contextFile" ),
                                  textOf( *configuration, "switchConf" ) } );
    }
    return Baseline( std::move( findings ) );
}

} // namespace Bfri
