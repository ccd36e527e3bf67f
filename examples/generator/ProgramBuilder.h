#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>

#include "Program.h"

namespace bfgen {

/// Puts a program together: hands out the handles, keeps the names apart and ties the tables to each other.
class ProgramBuilder {
  public:
    /// pipelineIndex stands in the handles, so that those of two pipelines never meet.
    /// The controls are called controlPrefix + "Ingress" and "Egress".
    ProgramBuilder( uint32_t pipelineIndex, uint32_t stages, std::string_view controlPrefix );

    Program& program() { return program_; }
    std::size_t tableCount() const { return program_.tables.size(); }

    /// A name within the pipeline: "pipe_a.SwitchIngress.acl.ipv4_acl", say.
    std::string qualified( bool ingress, std::string_view name ) const;

    /// Adds a table with a handle of its kind; a name that was used before gets a number.
    Table& add( Table table );

    /// Names the logical pipe in the table itself; without that it's left to the reader.
    void nameLogicalPipe( Table& table ) const;

    void addAction( Match& match, std::string name );
    void addLearnQuanta( LearnQuanta quanta );
    void addHashCalculation( HashCalculation calculation );

  private:
    uint32_t newHandle( uint32_t kind );
    std::string uniqueName( std::string const& name );

    Program program_;
    uint32_t pipelineIndex_;
    std::string controlPrefix_;
    uint32_t serial_ = 0;
    std::map<std::string, uint32_t> namesUsed_;
};

/// The list of the owner's references that tables of that kind stand in.
References& referencesFor( Match& owner, Details const& attendant );

/// Lists the attendant among the owner's references.
void link( Table& owner, Table const& attendant );

/// Lets one of the owner's actions choose an entry of the attendant.
void useInAction( Action& action, Table const& attendant );

} // namespace bfgen
