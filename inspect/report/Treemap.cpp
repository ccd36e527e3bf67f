#include "inspect/report/Treemap.h"

#include <map>
#include <numeric>

namespace Bfri {

namespace {

using Is = TreemapBox::Is;

/// The parts of a name: program, control, rest of the path; in the last group the resources.
struct Group {
    std::uint64_t entries = 0;
    std::map<String, Group> groups;
    std::vector<ChipResource const*> resources;
};

void add( Group& root, ChipProgram const& program, ChipResource const& resource ) {
    std::string_view const name = resource.name();
    auto const last = name.rfind( '.' );
    std::string_view path =
        name.substr( 0, last == std::string_view::npos || last + 1 == name.size() ? 0 : last );
    if( path.starts_with( program.name + "." ) )
        path.remove_prefix( program.name.size() + 1 );
    auto const dot = std::min( path.find( '.' ), path.size() );
    Group* group = &root;
    group->entries += resource.size;
    for( std::string_view const part : { std::string_view( program.name ), path.substr( 0, dot ),
                                         path.substr( std::min( dot + 1, path.size() ) ) } ) {
        group = &group->groups[ String( part ) ];
        group->entries += resource.size;
    }
    group->resources.push_back( &resource );
}

/// The head's height and the margin of a level's boxes.
struct Level {
    Is is;
    double head, margin;
    double leastWidth, leastHeight; ///< of a box with a head
};
constexpr Level levels[] = {
    { Is::program, 18, 3, 0, 0 }, { Is::control, 16, 1, 50, 40 }, { Is::path, 14, 1, 44, 44 } };

std::size_t countOf( Group const& group ) {
    return std::accumulate(
        group.groups.begin(), group.groups.end(), group.resources.size(),
        []( std::size_t sum, auto const& entry ) { return sum + countOf( entry.second ); } );
}

Box inner( Box box, Level const& level, bool hasHead ) {
    double const head = hasHead ? level.head : 0;
    return { box.x + level.margin, box.y + head + ( hasHead && level.margin > 1 ? 0 : 1 ),
             std::max( 0.0, box.width - 2 * level.margin ),
             std::max( 0.0, box.height - head - level.margin - 1 ) };
}

/// Takes a share off the end of a box, wide enough to be seen.
Box cutOff( Box& box, double share ) {
    constexpr double least = 3;
    Box end = box;
    share = std::max( share, std::min( 0.5, least / std::max( box.width, box.height ) ) );
    if( box.width >= box.height ) {
        end.width = box.width * share;
        box.width -= end.width;
        end.x = box.x + box.width;
    } else {
        end.height = box.height * share;
        box.height -= end.height;
        end.y = box.y + box.height;
    }
    return end;
}

template<class Element>
double share( Element const& part, std::uint64_t whole ) {
    return static_cast<double>( part ) / static_cast<double>( whole );
}

class TreemapLayout {
  public:
    TreemapLayout( Treemap& map, double leastArea ) : map_( map ), leastArea_( leastArea ) {}

    /// Groups with too little room for anything in them are drawn as one.
    void layGroups( Group const& parent, Box const& place, std::size_t depth ) {
        constexpr double leastSide = 9;
        std::vector<std::pair<String const*, Group const*>> groups;
        for( auto const& [ label, group ] : parent.groups )
            groups.emplace_back( &label, &group );
        std::stable_sort( groups.begin(), groups.end(), []( auto const& a, auto const& b ) {
            return a.second->entries > b.second->entries;
        } );
        auto const isThin = [ & ]( Box const& box ) {
            return std::min( box.width, box.height ) < leastSide || box.width * box.height < leastArea_;
        };
        std::size_t small = 0;
        std::uint64_t entries = 0;
        Box strip{};
        std::vector<Box> boxes;
        for( bool again = true; again; ) {
            Box room = place;
            strip = entries > 0 ? cutOff( room, share( entries, parent.entries ) ) : strip;
            std::vector<double> values;
            values.reserve( groups.size() );
            for( auto const& group : groups )
                values.push_back( static_cast<double>( group.second->entries ) );
            boxes = squarified( values, room );
            auto const isToGo = [ & ] {
                return boxes.size() > ( small > 0 ? 0U : 1U ) && isThin( boxes.back() );
            };
            again = isToGo();
            while( isToGo() ) {
                small += countOf( *groups.back().second );
                entries += groups.back().second->entries;
                groups.pop_back();
                boxes.pop_back();
            }
        }
        addSeveral( small, entries, strip );
        for( std::size_t i = 0; i < boxes.size(); ++i )
            layGroup( *groups[ i ].first, *groups[ i ].second, boxes[ i ], depth );
    }

  private:
    void addSeveral( std::size_t count, std::uint64_t entries, Box place ) {
        if( count > 0 && entries > 0 )
            map_.boxes.push_back( { Is::several, place, "", entries, nullptr, count } );
    }

    void layGroup( String const& label, Group const& group, Box place, std::size_t depth ) {
        Level const& level = levels[ depth ];
        bool const isLast = depth + 1 == std::size( levels );
        bool const hasHead = place.width > level.leastWidth && place.height > level.leastHeight &&
                             ( !isLast || ( !label.empty() && group.resources.size() > 1 ) );
        map_.boxes.push_back( { level.is, place, label, group.entries, nullptr, 0, hasHead } );
        if( isLast )
            layResources( group, inner( place, level, hasHead ) );
        else
            layGroups( group, inner( place, level, hasHead ), depth + 1 );
    }

    void layResources( Group const& group, Box place ) {
        auto all = group.resources;
        std::stable_sort( all.begin(), all.end(),
                          []( auto const* a, auto const* b ) { return a->size > b->size; } );
        auto const hasRoom = [ & ]( ChipResource const* resource, double area ) {
            return share( resource->size, group.entries ) * place.width * place.height >= area;
        };
        std::size_t shown = 0;
        while( shown < all.size() && hasRoom( all[ shown ], leastArea_ ) )
            ++shown;
        constexpr double visible = 20;
        if( shown + 1 == all.size() && hasRoom( all.back(), visible ) ) // one alone is not folded
            ++shown;
        std::uint64_t rest = 0;
        for( std::size_t i = shown; i < all.size(); ++i )
            rest += all[ i ]->size;
        Box const strip = rest > 0 ? cutOff( place, share( rest, group.entries ) ) : Box{};
        std::vector<double> values;
        values.reserve( shown );
        for( std::size_t i = 0; i < shown; ++i )
            values.push_back( static_cast<double>( all[ i ]->size ) );
        auto const boxes = squarified( values, place );
        for( std::size_t i = 0; i < boxes.size(); ++i )
            map_.boxes.push_back( { Is::resource, boxes[ i ], "", all[ i ]->size, all[ i ] } );
        addSeveral( all.size() - shown, rest, strip );
    }

    Treemap& map_;
    double const leastArea_;
};

/// The end of the row of values that begins with one: while the worst shape in it gets no worse.
std::size_t endOfRow( std::vector<double> const& values, std::size_t first, double scale, double side,
                      double& sum ) {
    double best = 0;
    std::size_t end = first;
    for( sum = 0; end < values.size(); ++end ) {
        double const area = values[ end ] * scale, next = sum + area;
        double const worst = std::max( side * side * values[ first ] * scale / ( next * next ),
                                       next * next / ( side * side * area ) );
        if( end > first && worst > best )
            break;
        sum = next;
        best = worst;
    }
    return end;
}

} // namespace

std::vector<Box> squarified( std::vector<double> const& values, Box whole ) {
    std::vector<Box> boxes;
    double const total = std::accumulate( values.begin(), values.end(), 0.0 );
    double const scale = total > 0 ? whole.width * whole.height / total : 0;
    for( std::size_t i = 0; i < values.size() && scale > 0; ) {
        double sum = 0;
        bool const isWide = whole.width >= whole.height;
        double const side = isWide ? whole.height : whole.width;
        std::size_t const end = endOfRow( values, i, scale, side, sum );
        double const depth = sum / side;
        for( double at = 0; i < end; ++i ) {
            double const length = values[ i ] * scale / depth;
            boxes.push_back( isWide ? Box{ whole.x, whole.y + at, depth, length }
                                    : Box{ whole.x + at, whole.y, length, depth } );
            at += length;
        }
        ( isWide ? whole.x : whole.y ) += depth;
        ( isWide ? whole.width : whole.height ) -= depth;
    }
    return boxes;
}

Treemap treemapOf( Chip const& chip, bool all ) {
    Group root;
    std::size_t count = 0;
    for( ChipResource const& resource : chip.resources ) {
        if( resource.size > 0 && resource.isPlaced && ( all || isMatchType( resource.type ) ) ) {
            add( root, chip.programs[ resource.program ], resource );
            ++count;
        }
    }
    Treemap map;
    map.entries = root.entries;
    double const leastArea = count < 400 ? 130 : count < 4000 ? 210 : 300;
    if( count > 0 )
        TreemapLayout( map, leastArea ).layGroups( root, { 0, 0, Treemap::width, Treemap::height }, 0 );
    return map;
}

} // namespace Bfri
