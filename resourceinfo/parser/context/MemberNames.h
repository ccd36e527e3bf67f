#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace Context {

/// Every member of a context file that some pass asks for, wherever it is. All others are dropped while
/// the file is read; Json refuses to compile an access to one of them.
inline constexpr std::array memberNames = std::to_array<std::string_view>( {
    "action_data_table_refs",
    "action_profile",
    "actions",
    "alu_width",
    "atcam_table",
    "bit_width",
    "direction",
    "dual_width_mode",
    "dynamic_hash_calculations",
    "egress",
    "field_lists",
    "field_name",
    "field_width",
    "fields",
    "flexible_headers",
    "handle",
    "how_referenced",
    "idletime_stage_table",
    "indirect_resources",
    "ingress",
    "is_pov",
    "is_resource_controllable",
    "learn_quanta",
    "logical_pipe",
    "lq_cfg_type",
    "match_attributes",
    "match_type",
    "meter_granularity",
    "meter_table_refs",
    "meter_type",
    "name",
    "number_partitions",
    "phv_allocation",
    "pre_color_field_name",
    "precision",
    "records",
    "resource_name",
    "selection_table_refs",
    "size",
    "slice",
    "stage_number",
    "stage_table_type",
    "stage_tables",
    "stateful_table_refs",
    "static_entries",
    "statistics_table_refs",
    "statistics_type",
    "table_type",
    "tables",
    "units",
} );

/// The names as a hash table, made by the compiler: the reader asks it for every member of a file, and most
/// look-ups end at an empty slot.
class MemberNameTable {
  public:
    constexpr MemberNameTable() {
        slots_.fill( {} );
        for( std::size_t i = 0; i < memberNames.size(); ++i ) {
            std::size_t const slot = find( memberNames[ i ] );
            slots_[ slot ] = memberNames[ i ];
            positions_[ slot ] = i;
        }
    }

    /// The table's own text of a name; an empty one when it is not there.
    constexpr std::string_view textOf( std::string_view name ) const {
        return name.empty() ? name : slots_[ find( name ) ];
    }

    /// The position in memberNames of a name that is there.
    constexpr std::size_t positionOf( std::string_view name ) const { return positions_[ find( name ) ]; }

  private:
    static constexpr unsigned hash( std::string_view name ) {
        auto const at = [ & ]( std::size_t i ) { return static_cast<unsigned char>( name[ i ] ); };
        return static_cast<unsigned>( name.size() ) * 5 + at( 0 ) * 3U + at( name.size() / 2 ) * 11U +
               at( name.size() - 1 ) * 7U;
    }

    /// The slot of a name, or the empty one where it would go.
    constexpr std::size_t find( std::string_view name ) const {
        std::size_t slot = hash( name ) % slots_.size();
        while( !slots_[ slot ].empty() && slots_[ slot ] != name )
            slot = ( slot + 1 ) % slots_.size();
        return slot;
    }

    std::array<std::string_view, 256> slots_{}; // sparse: few names share a slot
    std::array<std::size_t, 256> positions_{};
};
static_assert( memberNames.size() <= 64 );

inline constexpr MemberNameTable memberNameTable;

/// A name that some pass asks for, as text that stays; empty for any other.
constexpr std::string_view memberNameOf( std::string_view name ) { return memberNameTable.textOf( name ); }

/// Whether some pass asks for members of that name.
constexpr bool isMemberName( std::string_view name ) { return !memberNameOf( name ).empty(); }

} // namespace Context
