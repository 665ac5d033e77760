#pragma once

#include <string>

namespace CLI {
class App;
}

namespace app {

class Environment;

// Each adds its verb to the program. A verb carries out its work when the command
// line has been parsed; what fails is thrown.

void addShowCommand(CLI::App& program, Environment& environment);
/// Adds to the verb connection what reads the data; `deck` is its deck.
void addConnectionDataActions(CLI::App& verb, const std::string& deck, Environment& environment);
void addPlayCommand(CLI::App& program, Environment& environment);
void addEditCommand(CLI::App& program, Environment& environment);
void addInfoCommand(CLI::App& program, Environment& environment);
void addShapesCommand(CLI::App& program, Environment& environment);
void addConnectionCommand(CLI::App& program, Environment& environment);
void addLinkCommand(CLI::App& program, Environment& environment);
void addUnlinkCommand(CLI::App& program, Environment& environment);
void addSlideCommand(CLI::App& program, Environment& environment);
void addDisplayCommand(CLI::App& program, Environment& environment);
void addFillCommand(CLI::App& program, Environment& environment);
void addImportCommand(CLI::App& program, Environment& environment);
void addOfflineCommand(CLI::App& program, Environment& environment);
void addLogCommand(CLI::App& program, Environment& environment);
void addSnapshotCommand(CLI::App& program, Environment& environment);
void addDistributeCommand(CLI::App& program, Environment& environment);
void addHubConfigCommand(CLI::App& program, Environment& environment);
void addScreenCommand(CLI::App& program, Environment& environment);
void addKeyCommand(CLI::App& program, Environment& environment);
/// For who packs the program; users are not told of it.
void addManualCommand(CLI::App& program, Environment& environment);
void addCheckCommand(CLI::App& program, Environment& environment);

}  // namespace app
