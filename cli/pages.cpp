// SPDX-License-Identifier: MIT
#include "pages.hpp"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <orv/version.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <vector>

#include "error.hpp"
#include "functions.hpp"
#include "output.hpp"
#include "random_kinds.hpp"
#include "suggest.hpp"

namespace orv_cli {
namespace {

using Strings = std::vector<std::string>;

std::vector<const CLI::App*> commands_of(const CLI::App& program) {
  return program.get_subcommands([](const CLI::App*) { return true; });
}

Strings names_of(const std::vector<const CLI::App*>& commands) {
  Strings names;
  for (const CLI::App* command : commands) names.push_back(command->get_name());
  return names;
}

const CLI::App& find_command(const CLI::App& program, const std::string& name) {
  const auto commands = commands_of(program);
  const auto found =
      std::ranges::find_if(commands, [&](const CLI::App* c) { return c->get_name() == name; });
  if (found != commands.end()) return **found;
  const Strings names = names_of(commands);
  throw Error("{} is no command{}; allowed are {}", in_quotes(name), did_you_mean(name, names),
              fmt::join(names, ", "));
}

/// "-b,--by" and the like.
Strings option_names(const CLI::Option& option) {
  Strings names;
  for (const std::string& name : option.get_snames()) names.push_back("-" + name);
  for (const std::string& name : option.get_lnames()) names.push_back("--" + name);
  return names;
}

// ---- Manual pages -------------------------------------------------------------------------------

/// Text as it stands, whatever of it troff would take for its own.
std::string troff(const std::string& text) {
  std::string result;
  bool at_start = true;
  for (const char c : text) {
    if (at_start && (c == '.' || c == '\'')) result += "\\&";
    if (c == '-') {
      result += "\\-";
    } else if (c == '\\') {
      result += "\\e";
    } else {
      result += c;
    }
    at_start = c == '\n';
  }
  return result;
}

std::string manual_option(const CLI::Option& option) {
  const Strings names = option_names(option);
  const std::string value = option.get_option_text();
  std::string text =
      fmt::format(".TP\n\\fB{}\\fR", troff(fmt::format("{}", fmt::join(names, ", "))));
  if (!value.empty() && value != " ") text += " \\fI" + troff(value) + "\\fR";
  return text + "\n" + troff(option.get_description()) + "\n";
}

}  // namespace

std::string manual_page(const CLI::App& command) {
  const CLI::App* const parent = command.get_parent();
  const std::string name = parent == nullptr ? "orv" : "orv-" + command.get_name();
  std::string call = parent == nullptr ? "orv COMMAND [OPTIONS]" : "orv " + command.get_name();
  std::string options;
  for (const CLI::Option* option : command.get_options()) {
    if (!option->nonpositional()) {
      const std::string what = option->get_name();
      call += option->get_required() ? " " + what : " [" + what + "]";
      options +=
          fmt::format(".TP\n\\fI{}\\fR\n{}\n", troff(what), troff(option->get_description()));
    } else {
      options += manual_option(*option);
    }
  }
  if (parent != nullptr) call += " [OPTIONS]";
  std::string text = fmt::format(
      ".TH \"{}\" 1 \"\" \"orv {}\"\n.SH NAME\n{} \\- {}\n.SH SYNOPSIS\n{}\n.SH OPTIONS\n{}", name,
      orv_version(), troff(name), troff(command.get_description()), troff(call), options);
  if (parent == nullptr) {
    text += ".SH COMMANDS\n";
    for (const CLI::App* c : commands_of(command)) {
      text +=
          fmt::format(".TP\n\\fBorv\\-{}\\fR(1)\n{}\n", c->get_name(), troff(c->get_description()));
    }
  }
  if (!command.get_footer().empty()) {
    text += ".SH DETAILS\n.nf\n" + troff(command.get_footer()) + "\n.fi\n";
  }
  return text;
}

// ---- Completion ---------------------------------------------------------------------------------

namespace {

/// What may stand as a command's first argument, where that is known.
Strings first_words(const CLI::App& program, const std::string& command) {
  Strings words;
  if (command == "math" || command == "info" || command == "measure") {
    for (const Function& f : functions()) {
      if (std::ranges::count(words, f.name) == 0) words.emplace_back(f.name);
    }
  }
  if (command == "random") words = random_kinds();
  if (command == "help" || command == "man") words = names_of(commands_of(program));
  if (command == "completion") words = {"bash", "zsh", "fish"};
  return words;
}

Strings option_words(const CLI::App& command) {
  Strings words;
  for (const CLI::Option* option : command.get_options()) {
    for (std::string& name : option_names(*option)) words.push_back(std::move(name));
  }
  return words;
}

/// Of bash, which zsh can run.
std::string bash_completion(const CLI::App& program) {
  std::string cases;
  for (const CLI::App* command : commands_of(program)) {
    cases += fmt::format("    {}) options='{}' words='{}' ;;\n", command->get_name(),
                         fmt::join(option_words(*command), " "),
                         fmt::join(first_words(program, command->get_name()), " "));
  }
  return fmt::format(R"(# Completion of orv, made by: orv completion bash
_orv() {{
  local word=${{COMP_WORDS[COMP_CWORD]}} options='' words=''
  COMPREPLY=()
  if [ "$COMP_CWORD" -eq 1 ]; then
    COMPREPLY=($(compgen -W '{} --help --version' -- "$word"))
    return
  fi
  case ${{COMP_WORDS[1]}} in
{}  esac
  case $word in
    -*) COMPREPLY=($(compgen -W "$options" -- "$word")) ;;
    *)
      if [ "$COMP_CWORD" -eq 2 ] && [ -n "$words" ]; then
        COMPREPLY=($(compgen -W "$words" -- "$word"))
      else
        COMPREPLY=($(compgen -f -- "$word"))
      fi ;;
  esac
}}
complete -o filenames -F _orv orv
)",
                     fmt::join(names_of(commands_of(program)), " "), cases);
}

std::string fish_quoted(const std::string& text) {
  std::string result = "'";
  for (const char c : text.substr(0, text.find('\n'))) {
    if (c == '\'' || c == '\\') result += '\\';
    result += c;
  }
  return result + "'";
}

std::string fish_completion(const CLI::App& program) {
  std::string text = "# Completion of orv, made by: orv completion fish\n";
  for (const CLI::App* command : commands_of(program)) {
    const std::string& name = command->get_name();
    text += fmt::format("complete -c orv -n __fish_use_subcommand -f -a {} -d {}\n", name,
                        fish_quoted(command->get_description()));
    const std::string seen = fmt::format("'__fish_seen_subcommand_from {}'", name);
    const Strings words = first_words(program, name);
    if (!words.empty()) {
      text += fmt::format("complete -c orv -n {} -f -a '{}'\n", seen, fmt::join(words, " "));
    }
    for (const CLI::Option* option : command->get_options()) {
      std::string names;
      for (const std::string& s : option->get_snames()) names += " -s " + s;
      for (const std::string& l : option->get_lnames()) names += " -l " + l;
      if (names.empty()) continue;
      const bool takes_value = option->get_items_expected_max() > 0;
      text += fmt::format("complete -c orv -n {}{}{} -d {}\n", seen, names,
                          takes_value ? " -r" : "", fish_quoted(option->get_description()));
    }
  }
  return text;
}

}  // namespace

std::string completion(const CLI::App& program, const std::string& shell) {
  if (shell == "fish") return fish_completion(program);
  if (shell == "bash") return bash_completion(program);
  return "#compdef orv\nautoload -U +X bashcompinit && bashcompinit\n" + bash_completion(program);
}

// ---- The commands -------------------------------------------------------------------------------

void add_page_commands(CLI::App& program) {
  const auto topic = std::make_shared<std::string>();
  const auto add = [&](const char* name, const char* text, auto page) {
    CLI::App* const command = program.add_subcommand(name, text);
    command->add_option("COMMAND", *topic, "The command; without, the program itself")
        ->option_text(" ");
    command->callback([&program, topic, page] {
      output("{}", page(topic->empty() ? program : find_command(program, *topic)));
    });
  };
  add("help", "Tell of a command", [](const CLI::App& command) { return command.help(); });
  add("man", "Print a command's manual page for man, as in: orv man stats | man -l -", manual_page);
  CLI::App* const shells =
      program.add_subcommand("completion", "Print completion for bash, zsh or fish");
  shells->add_option("SHELL", *topic, "bash, zsh or fish")
      ->required()
      ->option_text(" ")
      ->check(CLI::IsMember({"bash", "zsh", "fish"}));
  shells->footer(
      "Examples:\n  source <(orv completion bash)\n  orv completion zsh > ~/.zfunc/_orv\n"
      "  orv completion fish > ~/.config/fish/completions/orv.fish");
  shells->callback([&program, topic] { output("{}", completion(program, *topic)); });
}

std::string unknown_argument(const CLI::App& program) {
  for (const CLI::App* command : program.get_subcommands()) {
    const Strings given = command->remaining();
    const auto option = std::ranges::find_if(given, [](auto& s) { return s.starts_with('-'); });
    if (option == given.end()) continue;
    const std::string name = option->substr(0, option->find('='));
    return fmt::format("{}: orv {} has no such option{}; 'orv help {}' lists them", one_line(name),
                       command->get_name(), did_you_mean(name, option_words(*command)),
                       command->get_name());
  }
  return "";
}

}  // namespace orv_cli
