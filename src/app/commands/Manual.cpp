// The table of verbs as pages of the manual, and as completion for bash.

#include "app/commands/Manual.h"

#include <CLI/CLI.hpp>
#include <ostream>
#include <string_view>

#include "basic/Strings.h"

namespace app {

namespace {

using Apps = std::vector<const CLI::App*>;
using Options = std::vector<const CLI::Option*>;

bool isShown(const CLI::Option& option) { return !option.get_group().empty(); }

Options positionals(const CLI::App& verb) {
  return verb.get_options([](const CLI::Option* option) { return option->get_positional(); });
}

/// Those of its groups of options, which are verbs without a name, as well.
Options named(const CLI::App& verb) {
  Options options =
      verb.get_options([](const CLI::Option* option) { return option->nonpositional() && isShown(*option); });
  for (const CLI::App* group :
       verb.get_subcommands([](const CLI::App* app) { return app->get_name().empty(); })) {
    const Options more = named(*group);
    options.insert(options.end(), more.begin(), more.end());
  }
  return options;
}

/// Text that roff takes as it is: no line begins with a request, and a hyphen is one that can be copied.
std::string roff(std::string_view text) {
  std::string safe;
  for (const char c : text) {
    if (c == '\\') {
      safe += "\\e";
    } else if (c == '-') {
      safe += "\\-";
    } else {
      if ((c == '.' || c == '\'') && (safe.empty() || safe.back() == '\n')) safe += "\\&";
      safe += c;
    }
  }
  return safe;
}

std::string upper(std::string_view name) { return basic::UCase(name); }

void writeTitle(std::ostream& out, const CLI::App& program, const std::string& name,
                const std::string& what) {
  out << ".TH " << roff(upper(name)) << " 1 \"\" \"" << roff(program.get_name() + " " + program.version())
      << "\" \"User Commands\"\n"
      << ".SH NAME\n"
      << roff(name) << " \\- " << roff(what) << '\n';
}

/// "[OPTION]... DECK", as roff.
std::string operands(const CLI::App& verb) {
  std::string text = " [\\fIOPTION\\fR]...";
  for (const CLI::Option* option : positionals(verb)) {
    const std::string name = "\\fI" + roff(option->get_name(true)) + "\\fR";
    text += option->get_required() ? " " + name : " [" + name + "]";
  }
  return text;
}

/// What stands behind an option: "FILE", "text|json", "FLOAT in [0.1 - 86400]". The parser's word for it has
/// the check of the value behind a colon.
std::string valueOf(const CLI::Option& option) {
  std::string type = option.get_type_name();
  const std::size_t colon = type.find(':');
  if (colon == std::string::npos) return type;
  const std::string check = type.substr(colon + 1);
  if (check.starts_with('{')) return basic::Replace(check.substr(1, check.size() - 2), ",", "|");
  const std::size_t range = check.find(" in [");
  return type.substr(0, colon) + (range == std::string::npos ? "" : check.substr(range));
}

void writeOption(std::ostream& out, const CLI::Option& option) {
  out << ".TP\n\\fB";
  std::string names;
  for (const std::string& name : option.get_snames()) names += (names.empty() ? "-" : ", -") + name;
  for (const std::string& name : option.get_lnames()) names += (names.empty() ? "--" : ", --") + name;
  out << roff(names.empty() ? option.get_name(true) : names) << "\\fR";
  if (option.get_items_expected_max() != 0 && !names.empty()) {
    out << " \\fI" << roff(valueOf(option)) << "\\fR";
  }
  out << '\n' << roff(option.get_description()) << (option.get_description().empty() ? "" : ".");
  if (!option.get_default_str().empty()) out << " Without it " << roff(option.get_default_str()) << '.';
  if (option.get_items_expected_max() > 1) out << " May be repeated.";
  out << '\n';
}

void writeOptions(std::ostream& out, const CLI::App& verb) {
  for (const CLI::Option* option : positionals(verb)) writeOption(out, *option);
  for (const CLI::Option* option : named(verb)) writeOption(out, *option);
}

void writeExitStatus(std::ostream& out) {
  out << ".SH EXIT STATUS\n"
         "0 when all went well, 1 when something failed (it is told on standard error), 2 for a command line "
         "that "
         "makes no sense.\n";
}

Apps actionsOf(const CLI::App& verb) {
  return verb.get_subcommands(
      [](const CLI::App* action) { return !action->get_group().empty() && !action->get_name().empty(); });
}

/// Names with one blank between them.
std::string words(const Apps& apps) {
  std::string all;
  for (const CLI::App* app : apps) all += (all.empty() ? "" : " ") + app->get_name();
  return all;
}

std::string optionWords(const CLI::App& verb) {
  std::string all;
  for (const CLI::Option* option : named(verb)) {
    for (const std::string& name : option->get_lnames()) all += (all.empty() ? "--" : " --") + name;
  }
  return all;
}

}  // namespace

std::vector<const CLI::App*> shownVerbs(const CLI::App& program) { return actionsOf(program); }

void writeProgramPage(std::ostream& out, const CLI::App& program) {
  writeTitle(out, program, program.get_name(), "decks with live data on screens");
  out << ".SH SYNOPSIS\n\\fBlumenfold\\fR \\fIVERB\\fR [\\fIOPTION\\fR]...\n"
      << ".SH DESCRIPTION\n"
      << roff(program.get_description()) << '\n'
      << ".SH VERBS\n";
  for (const CLI::App* verb : shownVerbs(program)) {
    out << ".TP\n\\fB" << roff(verb->get_name()) << "\\fR\n"
        << roff(verb->get_description()) << "; see \\fBlumenfold\\-" << roff(verb->get_name())
        << "\\fR(1).\n";
  }
  out << ".SH OPTIONS\n";
  writeOptions(out, program);
  writeExitStatus(out);
  out << ".SH ENVIRONMENT\n"
         ".TP\n\\fBLUMENFOLD_TOKEN\\fR\nThe token that steering a show takes, and a desk.\n"
         ".TP\n\\fBLUMENFOLD_SCREENS\\fR\nThe list of the screens that may look, as \\fB\\-\\-screens\\fR.\n"
         ".TP\n\\fBLUMENFOLD_PUBLISH\\fR, \\fBLUMENFOLD_PUBLISH_TOKEN_FILE\\fR, \\fBLUMENFOLD_HUB\\fR\n"
         "As the options \\fB\\-\\-publish\\fR, \\fB\\-\\-publish\\-token\\-file\\fR and "
         "\\fB\\-\\-hub\\fR, with blanks between several addresses.\n"
         ".TP\n\\fBLUMENFOLD_PUBLISH_TOKEN\\fR\nThe token that the hub asks for.\n"
         ".TP\n\\fBLUMENFOLD_INFO_\\fIKEY\\fR\nGoes before the setting KEY of the section [Info].\n"
         ".TP\n\\fBLC_ALL\\fR, \\fBLC_NUMERIC\\fR, \\fBLC_TIME\\fR, \\fBLANG\\fR\n"
         "The language of numbers, days and clocks.\n"
         ".TP\n\\fBCONFIGURATION_DIRECTORY\\fR, \\fBSTATE_DIRECTORY\\fR, \\fBLOGS_DIRECTORY\\fR, "
         "\\fBCACHE_DIRECTORY\\fR\n"
         "Folders that a service manager gives a service; they are used in the place of the user's own.\n"
         ".TP\n\\fBNOTIFY_SOCKET\\fR, \\fBWATCHDOG_USEC\\fR, \\fBJOURNAL_STREAM\\fR\n"
         "A serving verb tells its service manager how it does, and writes to the journal with priorities.\n"
         ".SH FILES\n"
         ".TP\n\\fI/etc/lumenfold/NAME.conf\\fR\nThe deck and the options of the service lumenfold@NAME.\n"
         ".TP\n\\fI/usr/share/lumenfold/samples\\fR\nDecks with their data.\n"
         ".TP\n\\fI/usr/share/doc/lumenfold\\fR\nThe documentation.\n"
         ".SH SEE ALSO\n";
  const Apps verbs = shownVerbs(program);
  for (const CLI::App* verb : verbs) {
    out << ".BR lumenfold\\-" << roff(verb->get_name()) << (verb == verbs.back() ? " (1)\n" : " (1),\n");
  }
}

void writeVerbPage(std::ostream& out, const CLI::App& program, const CLI::App& verb) {
  const std::string name = program.get_name() + "-" + verb.get_name();
  const std::string command =
      "\\fB" + roff(program.get_name()) + " " + roff(verb.get_name()) + "\\fR" + operands(verb);
  const Apps actions = actionsOf(verb);
  writeTitle(out, program, name, verb.get_description());
  out << ".SH SYNOPSIS\n" << command;
  if (!actions.empty()) out << " \\fIACTION\\fR ...";
  out << "\n.SH DESCRIPTION\n" << roff(verb.get_description()) << ".\n.SH OPTIONS\n";
  writeOptions(out, verb);
  if (!actions.empty()) out << ".SH ACTIONS\n";
  for (const CLI::App* action : actions) {
    out << ".SS " << roff(action->get_name()) << '\n' << roff(action->get_description()) << ".\n";
    writeOptions(out, *action);
  }
  writeExitStatus(out);
  out << ".SH SEE ALSO\n.BR lumenfold (1)\n";
}

void writeCompletion(std::ostream& out, const CLI::App& program) {
  out << "# Completion of lumenfold for bash.\n"
         "_lumenfold() {\n"
         "  local word=${COMP_WORDS[COMP_CWORD]} options='' actions='' first=2 each\n"
         "  COMPREPLY=()\n"
         "  if ((COMP_CWORD == 1)); then\n"
         "    mapfile -t COMPREPLY < <(compgen -W '"
      << words(shownVerbs(program)) << ' ' << optionWords(program)
      << "' -- \"$word\")\n"
         "    return\n"
         "  fi\n"
         "  case ${COMP_WORDS[1]} in\n";
  for (const CLI::App* verb : shownVerbs(program)) {
    out << "    " << verb->get_name() << ")\n"
        << "      options='" << optionWords(*verb) << "'\n";
    const Apps actions = actionsOf(*verb);
    if (!actions.empty()) {
      // Behind what the verb itself takes, such as a deck.
      out << "      actions='" << words(actions) << "' first=" << 2 + positionals(*verb).size() << "\n"
          << "      for each in \"${COMP_WORDS[@]:2:COMP_CWORD-2}\"; do\n"
          << "        case $each in\n";
      for (const CLI::App* action : actions) {
        out << "          " << action->get_name() << ") options='" << optionWords(*action)
            << "' actions='' ;;\n";
      }
      out << "        esac\n      done\n";
    }
    out << "      ;;\n";
  }
  out << "  esac\n"
         "  if [[ $word == -* ]]; then\n"
         "    mapfile -t COMPREPLY < <(compgen -W \"$options\" -- \"$word\")\n"
         "  elif [[ -n $actions ]] && ((COMP_CWORD >= first)); then\n"
         "    mapfile -t COMPREPLY < <(compgen -W \"$actions\" -- \"$word\")\n"
         "  fi\n"
         "}\n"
         "complete -o default -F _lumenfold lumenfold\n";
}

}  // namespace app
