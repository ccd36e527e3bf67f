#include "inspect/check/Baseline.h"

#include "inspect/load/FileText.h"
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
    return std::ranges::all_of( all,
                                []( Json const* one ) { return memberOf( *one, "findings" ) != nullptr; } );
}

/// As a name is in JSON, whatever its bytes are.
String asInJson( String const& text ) {
    rapidjson::Document document;
    document.Parse( jsonQuoted( text ).c_str() );
    return { document.GetString(), document.GetStringLength() };
}

/// Whether it is about a file, which has a path in place of a name.
bool isAboutAFile( KnownFinding const& finding ) {
    return finding.name == finding.contextFile || finding.name == finding.switchConf;
}

/// Without the digits of handles: "0x0100000a" is "0x".
String withoutHandles( String text ) {
    constexpr std::size_t digits = 8;
    for( auto at = text.find( "0x" ); at != text.npos; at = text.find( "0x", at + 2 ) ) {
        auto const end = std::min( text.find_first_not_of( "0123456789abcdef", at + 2 ), text.size() );
        if( end - at - 2 == digits )
            text.erase( at + 2, digits );
    }
    return text;
}

/// Without the folders of quoted paths: "\"a/b.json\"" is "\"b.json\"".
String withoutFolders( String const& text ) {
    String result;
    for( std::size_t from = 0; from < text.size(); ) {
        auto const end = std::min( text.find( '"', from ), text.size() - 1 ) + 1;
        std::string_view part( text.data() + from, end - from );
        if( auto const slash = part.rfind( '/' ); slash != part.npos && part.ends_with( '"' ) )
            part.remove_prefix( slash + 1 );
        result += part;
        from = end;
    }
    return result;
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

Baseline::Key Baseline::keyOf( KnownFinding const& finding ) {
    return {
        finding.code, finding.kind + ' ' + ( isAboutAFile( finding ) ? "" : finding.name ),
        withoutHandles( isAboutAFile( finding ) ? withoutFolders( finding.message ) : finding.message ) };
}

Baseline::Baseline( std::vector<KnownFinding> findings )
    : findings_( std::move( findings ) ), taken_( findings_.size() ) {
    for( std::size_t i = 0; i < findings_.size(); ++i )
        byKey_[ keyOf( findings_[ i ] ) ].push_back( i );
}

bool Baseline::take( KnownFinding const& now, bool withHandles ) {
    auto const found = byKey_.find( keyOf( now ) );
    if( found == byKey_.end() )
        return false;
    for( std::size_t const i : found->second ) {
        if( !taken_[ i ] && ( !withHandles || findings_[ i ].message == now.message ) ) {
            taken_[ i ] = true;
            return true;
        }
    }
    return false;
}

void Baseline::mark( std::vector<Finding>& findings, String const& switchConf ) {
    for( bool const withHandles : { true, false } ) {
        for( Finding& finding : findings ) {
            if( !finding.isKnown )
                finding.isKnown = take( knownFrom( finding, switchConf ), withHandles );
        }
    }
}

std::vector<KnownFinding> Baseline::gone( std::vector<FindingKind const*> const& ignored ) const {
    std::vector<KnownFinding> all;
    for( std::size_t i = 0; i < findings_.size(); ++i ) {
        bool const isIgnored = std::ranges::any_of(
            ignored, [ & ]( FindingKind const* kind ) { return kind->code == findings_[ i ].code; } );
        if( !taken_[ i ] && !isIgnored )
            all.push_back( findings_[ i ] );
    }
    return all;
}

std::variant<Baseline, String> readBaseline( String const& path ) {
    if( String const reason = whyUnreadable( path ); !reason.empty() )
        return "can't be read: " + reason;
    std::ifstream file( path, std::ios::binary );
    rapidjson::IStreamWrapper stream( file );
    rapidjson::Document document;
    document.ParseStream<rapidjson::kParseIterativeFlag>( stream );
    if( document.HasParseError() )
        return String( "is not JSON: " ) + rapidjson::GetParseError_En( document.GetParseError() );
    if( !isAnswer( document ) )
        return String( "is not an answer of check in JSON" );
    std::vector<KnownFinding> findings;
    for( Json const* const configuration : elementsOf( document, "configurations" ) ) {
        if( Json const* const loads = memberOf( *configuration, "loads" ); loads && loads->IsFalse() )
            return "does not have the findings of " + quoted( textOf( *configuration, "switchConf" ) ) +
                   ", which could not be loaded";
        for( Json const* const finding : elementsOf( *configuration, "findings" ) )
            findings.push_back( { textOf( *finding, "code" ), textOf( *finding, "kind" ),
                                  textOf( *finding, "name" ), textOf( *finding, "message" ),
                                  textOf( *finding, "contextFile" ),
                                  textOf( *configuration, "switchConf" ) } );
    }
    return Baseline( std::move( findings ) );
}

} // namespace Bfri
