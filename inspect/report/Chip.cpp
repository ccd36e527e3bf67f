#include "inspect/report/Chip.h"

#include "inspect/model/Records.h"

#include <filesystem>
#include <map>
#include <numeric>
#include <set>

namespace Bfri {

namespace {

using Context::FileSurvey;
using Context::SurveyedTable;

/// A resource with a stage table that states no size is spread over its stages, with the rest in the first
/// ones.
void fillStages( ChipResource& resource, std::vector<PlacedStage> const& stages ) {
    resource.isStated = std::all_of( stages.begin(), stages.end(),
                                     []( PlacedStage const& one ) { return one.stated == one.tables; } );
    for( std::size_t i = 0; i < stages.size(); ++i ) {
        std::uint64_t const even = resource.size / stages.size() + ( i < resource.size % stages.size() );
        std::uint64_t const stated = stages[ i ].entries;
        resource.stages.push_back( { stages[ i ].stage, stated, resource.isStated ? stated : even } );
    }
}

/// The part of each path that tells it from the others: the file's name, else its folder; where neither does,
/// with the pipes.
void nameProgram( ChipProgram& program, std::vector<FileSurvey> const& files ) {
    auto const stem = []( auto const& path ) { return path.stem().string(); };
    auto const folder = []( auto const& path ) { return path.parent_path().filename().string(); };
    auto const tells = [ & ]( auto const& part ) {
        std::set<String> names;
        for( FileSurvey const& file : files )
            names.insert( part( std::filesystem::path( file.path ) ) );
        return names.size() == files.size() && names.count( "" ) == 0 && names.count( "context" ) == 0;
    };
    std::filesystem::path const path( program.file->path );
    if( tells( stem ) || tells( folder ) ) {
        program.name = tells( stem ) ? stem( path ) : folder( path );
        return;
    }
    program.name = path.string();
    for( U32 const pipe : program.pipes )
        program.name += ( pipe == program.pipes.front() ? " on pipe " : ", " ) + std::to_string( pipe );
}

/// The type of a record that is nowhere on the chip, and the record.
std::pair<BfResourceType, ChipRecord> recordOf( SurveyedTable const& survey,
                                                BfResourceInfo::BfResourceParser const& parser ) {
    using enum BfResourceType;
    U32 const record = *survey.record;
    if( survey.type == "statistics" )
        return { statistics, &parser.bfCounters().at( record ) };
    if( survey.type == "stateful" )
        return { stateful, &parser.bfRegisterInfos().at( record ) };
    if( survey.isWred )
        return { wred, &parser.bfWreds().at( record ) };
    return { meter, &parser.bfMeters().at( record ) };
}

class ChipBuilder {
  public:
    explicit ChipBuilder( Configuration const& configuration ) : chip_{ &configuration } {}

    Chip chip() && {
        std::vector<Stage> taken;
        for( FileSurvey const& file : chip_.configuration->files ) {
            addProgram( file );
            link( chip_.programs.back() );
        }
        for( ChipResource const& resource : chip_.resources ) {
            for( StageEntries const& one : resource.stages )
                taken.push_back( one.stage );
        }
        chip_.stages = allStagesUpTo( std::move( taken ) );
        addFields();
        indexNames();
        addFindings();
        return std::move( chip_ );
    }

  private:
    void addProgram( FileSurvey const& file ) {
        ChipProgram program{ &file, "", {}, chip_.resources.size(), 0, chip_.tables.size(), 0 };
        for( Value const& pipe : pipesOf( file.pipeMask ) )
            program.pipes.push_back( std::get<U32>( pipe.is ) );
        nameProgram( program, chip_.configuration->files );
        for( SurveyedTable const& survey : file.tables ) {
            bool const isMatchTable = survey.type == "match" && survey.record;
            if( survey.resource || ( survey.record && !isMatchTable ) )
                addResource( survey, isMatchTable );
            if( isMatchTable )
                addTable( survey );
        }
        program.endResource = chip_.resources.size();
        program.endTable = chip_.tables.size();
        chip_.programs.push_back( std::move( program ) );
    }

    /// After its resource, if it is placed.
    void addTable( SurveyedTable const& survey ) {
        surveys_.push_back( &survey );
        ChipTable table{ chip_.tables.size(), chip_.programs.size(),
                         &parser_.bfTables().at( *survey.record ) };
        for( std::size_t i = 0; survey.firstAction && i < survey.actions.size(); ++i )
            table.actions.push_back( &parser_.bfActions().at( static_cast<U32>( *survey.firstAction + i ) ) );
        if( survey.resource ) {
            table.resource = chip_.resources.size() - 1;
            chip_.resources.back().table = table.number;
        }
        chip_.tables.push_back( std::move( table ) );
    }

    void addResource( SurveyedTable const& survey, bool ofMatchTable ) {
        ChipResource resource{ chip_.resources.size(),
                               chip_.programs.size(),
                               &survey,
                               survey.handle.value_or( 0 ),
                               0,
                               survey.size.value_or( 0 ),
                               survey.direction == "ingress",
                               survey.resource.has_value() };
        if( survey.record && !ofMatchTable ) {
            auto const [ type, record ] = recordOf( survey, parser_ );
            resource.type = static_cast<U32>( type );
            resource.record = record;
        }
        if( survey.resource ) {
            BfResource const& placed = parser_.bfResources().at( *survey.resource );
            resource.handle = placed.handle;
            resource.type = placed.type;
            resource.size = placed.size;
            resource.ingress = placed.ingress;
            fillStages( resource, placed_[ *survey.resource ].value_or( std::vector<PlacedStage>() ) );
        }
        chip_.resources.push_back( std::move( resource ) );
    }

    void attach( ChipLink owner, ChipResource& resource ) {
        auto& owners = resource.owners;
        if( resource.link() == owner || std::find( owners.begin(), owners.end(), owner ) != owners.end() )
            return;
        owners.push_back( owner );
        if( owner.to == ChipLink::To::table )
            chip_.tables[ owner.number ].attached.push_back( resource.number );
    }
    void attach( ChipLink owner, U32 handle ) {
        auto const found = byHandle_.find( handle );
        if( found != byHandle_.end() )
            attach( owner, chip_.resources[ found->second ] );
        else if( owner.to == ChipLink::To::table )
            chip_.tables[ owner.number ].unknown.push_back( handle );
    }
    void attachReferences( ChipLink owner, SurveyedTable const& survey ) {
        for( Context::SurveyedReference const& reference : survey.references )
            attach( owner, reference.handle );
    }

    /// By handles, and by the names that actions of a table give.
    void link( ChipProgram const& program ) {
        byHandle_.clear();
        std::unordered_map<std::string_view, std::size_t> placed;
        for( std::size_t i = program.firstResource; i < program.endResource; ++i ) {
            byHandle_.emplace( chip_.resources[ i ].handle, i );
            placed.emplace( chip_.resources[ i ].name(), i );
        }
        for( ChipTable const& table : chip_.tablesOf( program ) ) {
            for( U32 const handle : { table.record->adtHandle, table.record->selHandle } ) {
                if( handle != 0 )
                    attach( table.link(), handle );
            }
            attachReferences( table.link(), *surveys_[ table.number ] );
        }
        for( std::size_t i = program.firstResource; i < program.endResource; ++i ) {
            ChipResource& resource = chip_.resources[ i ];
            if( !resource.table )
                attachReferences( resource.link(), *resource.survey );
            String const* const parent = parser_.parentTable().find( resource.name() );
            auto const owner = parent ? placed.find( *parent ) : placed.end();
            if( owner != placed.end() )
                attach( chip_.resources[ owner->second ].link(), resource );
        }
    }

    void addFields() {
        std::map<std::string_view, ChipField> fields;
        for( auto const& entry : parser_.ingressPhvContainers() )
            fields[ entry.key() ] = { &entry.key(), entry.value() };
        for( auto const& entry : parser_.egressPhvContainers() ) {
            ChipField& field = fields[ entry.key() ];
            field.name = &entry.key();
            field.egress = entry.value();
        }
        for( auto const& entry : fields )
            chip_.fields.push_back( entry.second );
        auto const weight = []( ChipField const& field ) {
            U32 const in = field.ingress.value_or( 0 ), out = field.egress.value_or( 0 );
            return std::pair( std::max( in, out ), in + out );
        };
        std::stable_sort( chip_.fields.begin(), chip_.fields.end(),
                          [ & ]( auto const& a, auto const& b ) { return weight( a ) > weight( b ); } );
    }

    void indexNames() {
        for( ChipTable const& table : chip_.tables )
            chip_.byName.emplace( table.name(), table.link() );
        for( ChipResource const& resource : chip_.resources ) {
            if( !resource.table )
                chip_.byName.emplace( resource.name(), resource.link() );
        }
    }

    void addFindings() {
        chip_.findings = findingsOf( *chip_.configuration );
        for( std::size_t i = 0; i < chip_.findings.size(); ++i ) {
            auto const link = chip_.linkOf( chip_.findings[ i ] );
            if( link && link->to == ChipLink::To::table )
                chip_.tables[ link->number ].findings.push_back( i );
        }
    }

    Chip chip_;
    BfResourceInfo::BfResourceParser const& parser_ = chip_.configuration->parser();
    std::vector<std::optional<std::vector<PlacedStage>>> const placed_ = placedStages( *chip_.configuration );
    std::vector<SurveyedTable const*> surveys_ = {};     // of the tables
    std::unordered_map<U32, std::size_t> byHandle_ = {}; // the resources of one program
};

} // namespace

bool ChipResource::isIn( Stage stage ) const {
    return std::any_of( stages.begin(), stages.end(),
                        [ & ]( StageEntries const& one ) { return one.stage == stage; } );
}

std::size_t Chip::columnOf( Stage stage ) const {
    auto const place = std::lower_bound( stages.begin(), stages.end(), stage );
    return static_cast<std::size_t>( place - stages.begin() );
}

std::size_t Chip::countOthers() const {
    return static_cast<std::size_t>( std::count_if(
        resources.begin(), resources.end(), []( auto const& resource ) { return !resource.table; } ) );
}

std::size_t Chip::countPlaced( ChipProgram const& program ) const {
    auto const parts = resourcesOf( program );
    return static_cast<std::size_t>( std::count_if(
        parts.begin(), parts.end(), []( auto const& resource ) { return resource.isPlaced; } ) );
}

String const& Chip::nameOf( ChipLink link ) const {
    return link.to == ChipLink::To::table ? tables[ link.number ].name() : resources[ link.number ].name();
}

U32 Chip::handleOf( ChipLink link ) const {
    return link.to == ChipLink::To::table ? tables[ link.number ].record->handle
                                          : resources[ link.number ].handle;
}

std::optional<ChipLink> Chip::linkOf( Finding const& finding ) const {
    auto const [ first, end ] = byName.equal_range( finding.name );
    for( auto entry = first; entry != end; ++entry ) {
        if( finding.handle == handleOf( entry->second ) )
            return entry->second;
    }
    return first == end ? std::nullopt : std::optional( first->second );
}

Chip chipOf( Configuration const& configuration ) { return ChipBuilder( configuration ).chip(); }

std::size_t placeOfType( U32 type ) {
    using enum BfResourceType;
    static constexpr BfResourceType order[ typeCount - 1 ] = {
        ternaryMatch, algorithmicTcamMatch, hashMatch, hashAction, phase0Match, matchWithNoKey, actionData,
        selection,    statistics,           meter,     wred,       stateful };
    auto const found =
        std::find( std::begin( order ), std::end( order ), static_cast<BfResourceType>( type ) );
    return static_cast<std::size_t>( found - std::begin( order ) );
}

} // namespace Bfri
