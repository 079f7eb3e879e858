#!/usr/bin/env python3
"""Writes the man page and the completions of kova-import.

    make_manual.py FOLDER COMMAND...

The one source is what COMMAND says with --help and --version, so that an option which the command has is also in the manual and
is completed. A help page that cannot be understood ends with an error and not with an incomplete manual.
"""

import re
import subprocess
import sys
from dataclasses import dataclass, field
from pathlib import Path

PROGRAM = "kova-import"


class UnknownForm(Exception):
    """A line of the help page that is not what this program knows."""


@dataclass
class Option:
    names: list[str]  # "-v", "--verbose"
    value: str        # "all|transport", "LOG", empty when the option takes none
    help: str

    def choices(self):
        """The words that are possible; none when the value is a file."""
        return self.value.split("|") if "|" in self.value else []


@dataclass
class Command:
    name: str
    help: str
    options: list[Option] = field(default_factory=list)


@dataclass
class Section:
    """A part behind the options: "Examples:", "Exit status of an import:"."""
    title: str
    rows: list[tuple[str, str]] = field(default_factory=list)


@dataclass
class Manual:
    version: str
    description: str
    usage: list[str] = field(default_factory=list)
    options: list[Option] = field(default_factory=list)  # of all sub-commands
    commands: list[Command] = field(default_factory=list)
    sections: list[Section] = field(default_factory=list)

    def default_command(self):
        """The sub-command that may be left out: the usage has it in brackets."""
        for command in self.commands:
            if any(f"[{command.name}]" in line for line in self.usage):
                return command
        raise UnknownForm("no sub-command stands in brackets in the usage")


# Reading the help page

OPTION = re.compile(r"  +(?P<names>-[^\s,]+(?:, ?-[^\s,]+)*)(?: (?P<value>\S+))?(?:  +(?P<help>\S.*))?")
SUB_COMMAND = re.compile(r"(?P<name>[a-z][a-z-]*): (?P<help>\S.*)")
HEADING = re.compile(r"(?P<title>[A-Z][A-Za-z -]*):")


def joined(first, second):
    return f"{first} {second}" if first else second


def read_option(line, options):
    match = OPTION.fullmatch(line)
    if match:
        options.append(Option(re.split(", ?", match["names"]), match["value"] or "", match["help"] or ""))
    elif line.startswith("   ") and options:  # the description goes on, or begins below a long name
        options[-1].help = joined(options[-1].help, line.strip())
    else:
        raise UnknownForm(line)


def read_row(line, rows):
    left, *right = re.split(r"  +", line.strip(), maxsplit=1)
    if right:
        rows.append((left, right[0]))
    elif line.startswith("   ") and rows:
        rows[-1] = (rows[-1][0], joined(rows[-1][1], left))
    else:
        rows.append((left, ""))


def read_help(text, version):
    manual = Manual(version, "")
    options = manual.options
    title = None
    for line in text.splitlines():
        heading = HEADING.fullmatch(line)
        sub_command = SUB_COMMAND.fullmatch(line)
        if not line:
            continue
        if heading:
            title = heading["title"]
            if title not in ("Usage", "Options"):
                manual.sections.append(Section(title))
        elif sub_command:
            manual.commands.append(Command(sub_command["name"], sub_command["help"]))
            options = manual.commands[-1].options
        elif title is None:
            manual.description = joined(manual.description, line)
        elif not line.startswith("  "):
            raise UnknownForm(line)
        elif title == "Usage":
            manual.usage.append(line.strip())
        elif title == "Options":
            read_option(line, options)
        else:
            read_row(line, manual.sections[-1].rows)
    if not (manual.description and manual.usage and manual.options and manual.commands):
        raise UnknownForm("the help page has no description, usage, options or sub-commands")
    for option in all_options(manual):
        if not option.help:
            raise UnknownForm(f"{option.names[0]} has no description")
    return manual


def all_options(manual):
    return manual.options + [option for command in manual.commands for option in command.options]


def with_value(options):
    return [option for option in options if option.value]


def names(options):
    return [name for option in options for name in option.names]


# Man page

def roff(text):
    """Text as it should appear; hyphens of names stay what a person can copy into a command line."""
    text = text.replace("\\", r"\(rs").replace("'", r"\(aq").replace("`", r"\(ga")
    text = re.sub(r"(?<![\w-])-(?=[\w-])|(?<=-)-(?=\w)", r"\-", text).replace(PROGRAM, r"kova\-import")
    text = re.sub(r"[^\x00-\x7F]", lambda match: rf"\[u{ord(match[0]):04X}]", text)
    return r"\&" + text if text.startswith(".") else text


def literal(text):
    return r"\fB" + roff(text).replace(r"\-", "-").replace("-", r"\-") + r"\fP"


def usage_line(line):
    """Capital words are to be replaced, the others are to be typed."""
    return re.sub(r"[A-Za-z-]+", lambda word: rf"\fI{word[0]}\fP" if word[0].isupper() else literal(word[0]), line)


def roff_option(option):
    value = "|".join(map(literal, option.choices())) or rf"\fI{roff(option.value)}\fP"
    return [".TP", ", ".join(map(literal, option.names)) + (f" {value}" if option.value else ""), roff(option.help)]


def roff_options(options):
    return [line for option in options for line in roff_option(option)]


def roff_section(section, last_title):
    """"Exit status of an import" and "Of both" behind it are one section with two headings below it."""
    title, of, part = re.fullmatch(r"(.*?) ?(?:\b([Oo]f) (.*))?", section.title).groups()
    lines = [f".SH {title.upper()}"] if title and title != last_title else []
    if of:
        lines.append(f".SS Of {roff(part)}")
    for left, right in section.rows:
        lines += [".TP", literal(left), roff(right)] if right else [".PP", literal(left)]
    return lines, title or last_title


def man_page(manual):
    description = manual.description.rstrip(".")
    lines = [
        # No date, so that each build of a version gives the same page.
        r'.\" Written by make_manual.py from what the command says with \-\-help.',
        f'.TH KOVA\\-IMPORT 1 "" "{PROGRAM} {manual.version}" "User Commands"',
        ".SH NAME",
        rf"kova\-import \- {roff(description[0].lower() + description[1:])}",
        ".SH SYNOPSIS",
        "\n.br\n".join(map(usage_line, manual.usage)),
        ".SH DESCRIPTION",
        roff(manual.description)]
    for command in manual.commands:
        lines += [".TP", literal(command.name), roff(command.help) + "."]
    lines += [".SH OPTIONS"] + roff_options(manual.options)
    for command in manual.commands:
        lines += [f".SS Of {literal(command.name)}"] + roff_options(command.options)
    title = ""
    for section in manual.sections:
        section_lines, title = roff_section(section, title)
        lines += section_lines
    return "\n".join(lines) + "\n"


# Completions. A sub-command or a file may stand first; without a sub-command the options of the default one are meant.

NOTE = "# Completion of kova-import, written by make_manual.py from what the command says with --help."


def bash_completion(manual):
    default = manual.default_command()
    choices = {}
    for option in with_value(all_options(manual)):
        for name in option.names:
            choices.setdefault(name, option.choices())
    value_cases = "\n".join(
        f"    {name}) " + (f"words='{' '.join(words)}'" if words else "return 0") + " ;;" for name, words in choices.items())
    command_cases = "\n".join(
        f"    {command.name}) options='{' '.join(names(manual.options + command.options))}' ;;" for command in manual.commands)
    commands = [command.name for command in manual.commands]
    return f"""{NOTE}

_kova_import() {{
    local word=${{COMP_WORDS[COMP_CWORD]}} before=${{COMP_WORDS[COMP_CWORD - 1]}}
    local command='' words='' options='' i
    COMPREPLY=()

    # The first word that is neither an option nor the value of one is the sub-command, or a file.
    for ((i = 1; i < COMP_CWORD; ++i)); do
        case ${{COMP_WORDS[i]}} in
        --) return 0 ;;
        {'|'.join(choices)})
            [[ ${{COMP_WORDS[i + 1]}} == = ]] && ((++i))
            ((++i))
            ;;
        {'|'.join(commands)}) command=${{command:-${{COMP_WORDS[i]}}}} ;;
        -*) ;;
        *) command=${{command:-{default.name}}} ;;
        esac
    done

    # bash splits --name=word at the =.
    if [[ $word == = ]]; then
        word=''
    elif [[ $before == = ]]; then
        before=${{COMP_WORDS[COMP_CWORD - 2]}}
    fi
    # What is left without an answer is completed as the name of a file.
    case $before in
{value_cases}
    esac
    case ${{command:-{default.name}}} in
{command_cases}
    esac
    if [[ -n $words || $word == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "${{words:-$options}}" -- "$word")
        compopt +o default 2>/dev/null
    elif [[ -z $command ]]; then
        mapfile -t COMPREPLY < <(compgen -W '{' '.join(commands)}' -- "$word" && compgen -f -- "$word")
        compopt -o filenames 2>/dev/null
    fi
    return 0
}}

complete -o default -F _kova_import {PROGRAM}
"""


def zsh_text(text):
    """For a description between apostrophes, also one in brackets."""
    return re.sub(r"([\\\[\]:])", r"\\\1", text).replace("'", r"'\''")


def zsh_option(option):
    alike = f"'({' '.join(option.names)})'" if len(option.names) > 1 else ""
    value = f":{zsh_text(option.value)}:" if option.value else ""
    if option.value:
        value += f"({' '.join(option.choices())})" if option.choices() else "_files"
    return "\n".join(
        f"    {alike}'{name}{'=' if option.value and name.startswith('--') else ''}[{zsh_text(option.help)}]{value}'"
        for name in option.names)


def zsh_completion(manual):
    default = manual.default_command()
    option_cases = "\n".join(
        f"{command.name})\n  options+=(\n" + "\n".join(map(zsh_option, command.options)) + "\n  )\n  ;;"
        for command in manual.commands)
    general_options = "\n".join(map(zsh_option, manual.options))
    commands = "\n".join(f"    '{command.name}:{zsh_text(command.help)}'" for command in manual.commands)
    return f"""#compdef {PROGRAM}
{NOTE}

local context state state_descr line command= i
local -a options
typeset -A opt_args

# The first word that is neither an option nor the value of one is the sub-command, or a file.
for ((i = 2; i < CURRENT; ++i)); do
  case $words[i] in
  --) command=${{command:-{default.name}}} ;;
  {'|'.join(names(with_value(all_options(manual))))}) ((++i)) ;;
  -*) ;;
  {'|'.join(command.name for command in manual.commands)}) command=${{command:-$words[i]}} ;;
  *) command=${{command:-{default.name}}} ;;
  esac
done

options=(
{general_options}
)
case ${{command:-{default.name}}} in
{option_cases}
esac
_arguments "${{options[@]}}" '*: :->words' && return 0
[[ $state == words ]] || return 1
if [[ -z $command ]]; then
  local -a commands=(
{commands}
  )
  _describe -t commands sub-command commands
fi
_files
"""


def fish_quoted(text):
    return "'" + text.replace("\\", "\\\\").replace("'", "\\'") + "'"


def fish_option(option, condition):
    words = [f"complete -c {PROGRAM}"] + ([f"-n {fish_quoted(condition)}"] if condition else [])
    words += [f"-l {name[2:]}" if name.startswith("--") else f"-s {name[1:]}" for name in option.names]
    if option.choices():
        words.append(f"-x -a {fish_quoted(' '.join(option.choices()))}")
    elif option.value:
        words.append("-r -F")
    return " ".join(words + [f"-d {fish_quoted(option.help)}"])


def fish_completion(manual):
    default = manual.default_command()
    others = " ".join(command.name for command in manual.commands if command is not default)
    lines = [NOTE, ""] + [fish_option(option, "") for option in manual.options]
    for command in manual.commands:
        lines += ["", f"complete -c {PROGRAM} -n __fish_use_subcommand -a {command.name} -d {fish_quoted(command.help)}"]
        seen = f"not __fish_seen_subcommand_from {others}" if command is default else \
            f"__fish_seen_subcommand_from {command.name}"
        lines += [fish_option(option, seen) for option in command.options]
    return "\n".join(lines) + "\n"


OUTPUTS = {
    f"{PROGRAM}.1": man_page,
    f"{PROGRAM}.bash": bash_completion,
    f"_{PROGRAM}": zsh_completion,
    f"{PROGRAM}.fish": fish_completion,
}


def output_of(command, option):
    return subprocess.run([*command, option], check=True, capture_output=True, encoding="utf-8").stdout


def main(arguments):
    if len(arguments) < 2:
        sys.exit(__doc__)
    folder, command = Path(arguments[0]), arguments[1:]
    manual = read_help(output_of(command, "--help"), output_of(command, "--version").strip().removeprefix(PROGRAM + " "))
    folder.mkdir(parents=True, exist_ok=True)
    for name, write in OUTPUTS.items():
        (folder / name).write_text(write(manual), encoding="utf-8")


if __name__ == "__main__":
    try:
        main(sys.argv[1:])
    except UnknownForm as line:
        sys.exit(f"make_manual.py: the help page of {PROGRAM} has an unknown form: {line}")
