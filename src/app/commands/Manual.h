#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace app {

// Pages of the manual (man(7)) and completion for bash, from the verbs and options that the command line is
// parsed by: what --help says is what they say.

/// The verbs that users are told of.
std::vector<const CLI::App*> shownVerbs(const CLI::App& program);

/// lumenfold(1): the verbs, and what all have in common.
void writeProgramPage(std::ostream& out, const CLI::App& program);
/// lumenfold-VERB(1), with the verb's actions if it has some.
void writeVerbPage(std::ostream& out, const CLI::App& program, const CLI::App& verb);

/// A script that bash sources: completes verbs, actions and options; elsewhere names of files.
void writeCompletion(std::ostream& out, const CLI::App& program);

}  // namespace app
