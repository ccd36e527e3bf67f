#include "inspect/check/Duplicates.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <optional>

#include <rapidjson/document.h>
#include <rapidjson/istreamwrapper.h>

namespace Bfri {

namespace {

/// Counts how often each path comes.
class Folder {
  public:
    void add( Duplicates& duplicates, String path, Context::Place place = {} ) {
        auto const [ found, isNew ] = places_.try_emplace( path, duplicates.size() );
        if( isNew )
            duplicates.push_back( { std::move( path ), place } );
        else
            ++duplicates[ found->second ].times;
    }

  private:
    std::map<String, std::size_t> places_;
};

/// Takes "/tables/3/" off the front of a pointer, if it is there; the 3.
std::optional<U32> takeTable( std::string_view& pointer ) {
    constexpr std::string_view front = "/tables/";
    U32 index = 0;
    if( !pointer.starts_with( front ) )
        return std::nullopt;
    auto const [ end, error ] =
        std::from_chars( pointer.data() + front.size(), pointer.data() + pointer.size(), index );
    auto const length = static_cast<std::size_t>( end - pointer.data() );
    if( error != std::errc() || length == pointer.size() )
        return std::nullopt;
    pointer.remove_prefix( length + 1 );
    return index;
}

void walk( rapidjson::Value const& value, String const& path, Folder& folder, Duplicates& duplicates ) {
    static constexpr std::string_view read[] = { "devices", "runtime_config", "pipelines", "context_file",
                                                 "pipes" };
    if( value.IsArray() ) {
        for( rapidjson::SizeType i = 0; i < value.Size(); ++i )
            walk( value[ i ], path + std::to_string( i ) + '/', folder, duplicates );
    } else if( value.IsObject() ) {
        for( auto member = value.MemberBegin(); member != value.MemberEnd(); ++member ) {
            String const name( member->name.GetString(), member->name.GetStringLength() );
            if( std::find( std::begin( read ), std::end( read ), name ) == std::end( read ) )
                continue;
            if( value.FindMember( member->name ) == member )
                walk( member->value, path + name + '/', folder, duplicates );
            else
                folder.add( duplicates, path + name );
        }
    }
}

} // namespace

FileDuplicates::FileDuplicates( Context::FileSurvey const& file ) {
    Folder ofFile;
    std::map<U32, Folder> ofTables;
    for( Context::DuplicateMember const& member : file.duplicates ) {
        std::string_view path = member.pointer;
        if( auto const index = takeTable( path ) )
            ofTables[ *index ].add( tables[ *index ], String( path ), member.place );
        else
            ofFile.add( others, member.pointer.substr( 1 ), member.place );
    }
}

Duplicates duplicatesInSwitchConf( String const& path ) {
    std::ifstream file( path, std::ios::binary );
    rapidjson::IStreamWrapper stream( file );
    rapidjson::Document document;
    document.ParseStream<rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag>( stream );
    Folder folder;
    Duplicates duplicates;
    walk( document, "", folder, duplicates );
    return duplicates;
}

} // namespace Bfri
