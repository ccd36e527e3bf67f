// Findings that the model does not show: what it keeps is what is left after an omission. They come from the
// survey of the context files; what the model does not confirm is no finding.

#include "inspect/check/CheckContext.h"
#include "inspect/model/Omissions.h"

#include <algorithm>
#include <map>

namespace Bfri {

namespace {

using Context::FileSurvey;
using Context::SurveyedTable;
using Context::TruncatedSize;
using Context::UnknownWord;

/// Hands each unknown word of the members that are asked for to `step`, with its file and table.
template<class Step>
void eachUnknownWord( CheckContext const& facts, std::initializer_list<std::string_view> members,
                      Step step ) {
    for( FileSurvey const& file : facts.configuration.files ) {
        for( UnknownWord const& word : file.unknownWords ) {
            if( std::ranges::find( members, word.member ) != members.end() )
                step( file, file.tables[ word.table ], word );
        }
    }
}

String says( UnknownWord const& word, char const* consequence ) {
    return String( "its \"" ) + word.member + "\" is " + quoted( word.word ) + consequence;
}

/// The value that the model assumes for an unknown word.
char const* consequenceOf( SurveyedTable const& table, UnknownWord const& word ) {
    if( word.member == std::string_view( "statistics_type" ) )
        return ", so that it counts neither packets nor bytes";
    return table.type == "meter" ? ", which the model takes for \"indirect\""
                                 : ", which the model takes for \"direct\"";
}

/// "its "stage_tables/1" has a "stage_number" of 1.5".
String oddStage( Context::SurveyedStageTable const& stageTable ) {
    String const front = "its \"" + stageTable.path + "\" has ";
    if( !stageTable.stageText )
        return front + "no \"stage_number\"";
    return front + "a \"stage_number\" " +
           ( stageTable.stageText->empty() ? "that is not a number" : "of " + *stageTable.stageText );
}

bool isStage( Context::SurveyedStageTable const& stageTable ) {
    return stageTable.stage && *stageTable.stage >= 0 && *stageTable.stage <= 255;
}

/// The largest size of each name that the model truncates, and its file.
using Sizes = std::map<String, std::pair<std::int64_t, String>>;

Sizes truncatedSizes( CheckContext const& facts, TruncatedSize::Kind kind ) {
    Sizes sizes;
    for( FileSurvey const& file : facts.configuration.files ) {
        for( TruncatedSize const& truncated : file.truncatedSizes ) {
            if( truncated.kind != kind )
                continue;
            auto const [ found, isNew ] =
                sizes.try_emplace( truncated.name, std::pair( truncated.size, file.path ) );
            if( !isNew && static_cast<std::uint64_t>( truncated.size ) >
                              static_cast<std::uint64_t>( found->second.first ) )
                found->second = { truncated.size, file.path };
        }
    }
    return sizes;
}

template<class Containers>
void findTruncatedPhv( CheckContext const& facts, TruncatedSize::Kind kind, Containers const& containers,
                       char const* direction, Findings& findings ) {
    for( auto const& [ name, size ] : truncatedSizes( facts, kind ) ) {
        auto const kept = containers.find( name );
        if( kept != containers.end() && kept->value() < size.first )
            findings.add( "PHV field", name, {},
                          "takes " + std::to_string( size.first ) + " bytes in " + direction +
                              ", the model says " + std::to_string( kept->value() ),
                          size.second );
    }
}

} // namespace

void findUnknownTableTypes( CheckContext const& facts, Findings& findings ) {
    eachUnknownWord( facts, { "table_type" }, [ & ]( auto const& file, auto const& table, auto const& word ) {
        findings.add( recordOf( table ), table.name, table.handle,
                      says( word, ", which the model does not know" ), file.path );
    } );
}

void findUnknownDirections( CheckContext const& facts, Findings& findings ) {
    eachUnknownWord( facts, { "direction" }, [ & ]( auto const& file, auto const& table, auto const& word ) {
        auto const kept = facts.placed.find( table.handle.value_or( 0 ) );
        if( kept != facts.placed.end() && kept->second->name == table.name && !kept->second->ingress )
            findings.add( "placed table", table.name, table.handle, says( word, ", the model says egress" ),
                          file.path );
    } );
}

void findUnknownWords( CheckContext const& facts, Findings& findings ) {
    eachUnknownWord( facts, { "statistics_type", "how_referenced" },
                     [ & ]( auto const& file, auto const& table, auto const& word ) {
                         findings.add( recordOf( table ), table.name, table.handle,
                                       says( word, consequenceOf( table, word ) ), file.path );
                     } );
}

void findOmitted( CheckContext const& facts, Findings& findings ) {
    for( FileSurvey const& file : facts.configuration.files ) {
        for( SurveyedTable const& table : file.tables ) {
            if( !table.isOmitted )
                continue;
            bool const isPlaced = table.handle && facts.parser.resourceHandlesHas( *table.handle );
            findings.add( "match table", table.name, table.handle,
                          "the model has no record of it and its actions: " + whyOmitted( table ) +
                              ( isPlaced ? "" : "; it has no stage table either" ),
                          file.path );
        }
    }
    for( FileSurvey const& file : facts.configuration.files ) {
        for( Context::SurveyedLearnQuanta const& quanta : file.learnQuantas ) {
            if( quanta.isOmitted )
                findings.add( "learn quanta", quanta.name, quanta.handle,
                              "the model has no record of it: it has no \"lq_cfg_type\"", file.path );
        }
    }
}

void findLostStages( CheckContext const& facts, Findings& findings ) {
    for( FileSurvey const& file : facts.configuration.files ) {
        for( TruncatedSize const& truncated : file.truncatedSizes ) {
            if( truncated.kind == TruncatedSize::Kind::firstStage )
                findings.add( "placed table", truncated.name, file.tables[ truncated.index ].handle,
                              "its first stage is " + std::to_string( truncated.size ) +
                                  ", its entry by handle says " + std::to_string( truncated.kept ),
                              file.path );
        }
    }
}

void findOddStages( CheckContext const& facts, Findings& findings ) {
    for( FileSurvey const& file : facts.configuration.files ) {
        for( SurveyedTable const& table : file.tables ) {
            for( auto const& stageTable : table.stageTables ) {
                bool const isFirst = &stageTable == &table.stageTables.front();
                if( table.type != "condition" && !isFirst && !isStage( stageTable ) )
                    findings.add( "placed table", table.name, table.handle, oddStage( stageTable ),
                                  file.path );
            }
        }
    }
}

void findLostPhvWidths( CheckContext const& facts, Findings& findings ) {
    findTruncatedPhv( facts, TruncatedSize::Kind::ingressPhv, facts.parser.ingressPhvContainers(), "ingress",
                      findings );
    findTruncatedPhv( facts, TruncatedSize::Kind::egressPhv, facts.parser.egressPhvContainers(), "egress",
                      findings );
}

void findWrappingHeaders( CheckContext const& facts, Findings& findings ) {
    for( auto const& [ name, size ] : truncatedSizes( facts, TruncatedSize::Kind::header ) ) {
        auto const bits = static_cast<std::uint64_t>( size.first );
        BfHeaderInfo const* const kept = facts.parser.bfHeaders().find( name );
        if( kept && kept->size() == bits % 0x10000 / 8 )
            findings.add( "header", name, {},
                          "its fields have " + std::to_string( size.first ) + " bits, the model says " +
                              std::to_string( kept->size() ) + " bytes",
                          size.second );
    }
}

} // namespace Bfri
