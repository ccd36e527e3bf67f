#include "inspect/check/CheckContext.h"

#include <charconv>
#include <fstream>
#include <map>
#include <rapidjson/document.h>
#include <rapidjson/istreamwrapper.h>

namespace Bfri {

namespace {

/// The members that the objects of a table or a file have more than once, by their paths in it.
class Duplicates {
  public:
    void add( String const& path, Context::Place place = {} ) {
        auto const [ known, isNew ] = positions_.try_emplace( path, all_.size() );
        if( isNew )
            all_.push_back( { path, place } );
        else
            ++all_[ known->second ].times;
    }
    /// In the order of each member's second occurrence. A switch configuration is not a file with places.
    void addTo( Findings& findings, char const* what, String const& name, std::optional<U32> handle,
                String const& file ) const {
        for( Duplicate const& one : all_ )
            findings.add( what, name, handle,
                          "has more than one " + quoted( one.path ) +
                              ( one.times > 2 ? " (" + std::to_string( one.times ) + " times)" : "" ) +
                              ", of which the first counts",
                          file,
                          file.empty() ? std::nullopt : std::optional( FindingPlace{ file, one.place } ) );
    }

  private:
    struct Duplicate {
        String path;          ///< "stage_tables/1/size"
        Context::Place place; ///< of the second
        std::size_t times = 2;
    };
    std::vector<Duplicate> all_ = {};
    std::map<String, std::size_t> positions_ = {};
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

void walk( rapidjson::Value const& value, String const& path, Duplicates& duplicates ) {
    static constexpr std::string_view read[] = { "devices", "runtime_config", "pipelines", "context_file",
                                                 "pipes" };
    if( value.IsArray() ) {
        for( rapidjson::SizeType i = 0; i < value.Size(); ++i )
            walk( value[ i ], path + std::to_string( i ) + '/', duplicates );
    } else if( value.IsObject() ) {
        for( auto member = value.MemberBegin(); member != value.MemberEnd(); ++member ) {
            String const name( member->name.GetString(), member->name.GetStringLength() );
            if( std::ranges::find( read, name ) == std::end( read ) )
                continue;
            if( value.FindMember( member->name ) == member )
                walk( member->value, path + name + '/', duplicates );
            else
                duplicates.add( path + name );
        }
    }
}

/// Those among the members of a switch configuration that are read; none if it cannot be read.
Duplicates duplicatesInSwitchConf( String const& path ) {
    std::ifstream file( path, std::ios::binary );
    rapidjson::IStreamWrapper stream( file );
    rapidjson::Document document;
    document.ParseStream<rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag>( stream );
    Duplicates duplicates;
    walk( document, "", duplicates );
    return duplicates;
}

} // namespace

void findRepeatedMembers( CheckContext const& facts, Findings& findings ) {
    Configuration const& configuration = facts.configuration;
    if( !configuration.isContextFile )
        duplicatesInSwitchConf( configuration.path )
            .addTo( findings, "switch configuration", configuration.path, {}, "" );
    for( Context::FileSurvey const& file : configuration.files ) {
        Duplicates ofFile;
        std::map<U32, Duplicates> ofTables;
        for( Context::DuplicateMember const& member : file.duplicates ) {
            std::string_view path = member.pointer;
            if( auto const index = takeTable( path ) )
                ofTables[ *index ].add( String( path ), member.place );
            else
                ofFile.add( member.pointer.substr( 1 ), member.place );
        }
        for( auto const& [ index, duplicates ] : ofTables ) {
            Context::SurveyedTable const& table = file.tables[ index ];
            duplicates.addTo( findings, recordOf( table ), table.name, table.handle, file.path );
        }
        ofFile.addTo( findings, "context file", file.path, {}, file.path );
    }
}

} // namespace Bfri
