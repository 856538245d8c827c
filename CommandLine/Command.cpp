#include "Command.h"

#include "Commands.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quib::cli {

namespace {

const OptionDescription kJson{u"json"_s, u"Print one JSON document."_s};

QList<Command> stateCommands()
{
    const QStringList notes{u"@notes"_s};
    const auto command = [&notes](const QString &name, const QString &summary, const QString &example, auto run) {
        return Command{.name = name,
                       .arguments = u"ID..."_s,
                       .summary = summary,
                       .example = example,
                       .minimumArguments = 1,
                       .maximumArguments = -1,
                       .run = run,
                       .completions = notes};
    };
    return {
        command(u"trash"_s, u"Move notes to the trash. They can be restored."_s, u"quibctl trash 4F1C"_s, runTrash),
        command(u"restore"_s, u"Take notes out of the trash."_s, u"quibctl restore 4F1C"_s, runRestore),
        command(u"archive"_s, u"Move notes to the archive, out of the lists but kept."_s,
                u"quibctl archive 4F1C 77AB"_s, runArchive),
        command(u"unarchive"_s, u"Take notes out of the archive."_s, u"quibctl unarchive 4F1C"_s, runUnarchive),
        command(u"pin"_s, u"Pin notes to the top of the lists."_s, u"quibctl pin 4F1C"_s, runPin),
        command(u"unpin"_s, u"Let notes go from the top of the lists."_s, u"quibctl unpin 4F1C"_s, runUnpin),
        command(u"delete"_s, u"Delete notes and their attachments for ever. There is no way back; see trash."_s,
                u"quibctl delete 4F1C"_s, runDelete),
    };
}

QList<Command> makeCommands()
{
    QList<Command> commands{
        {.name = u"new"_s,
         .arguments = u"[FILE|-]"_s,
         .summary =
             u"Make a note from a file's text and print its identifier. Without a file the text is empty, or read "
             u"from standard input when that is no terminal."_s,
         .example = u"echo 'Call the plumber' | quibctl new --title Plan --tags home,urgent -\n"
                    u"makes a note titled \"Plan\" with two tags"_s,
         .options = {{u"title"_s, u"Put T as a header line in front of the text."_s, u"T"_s},
                     {u"tags"_s, u"Add tags, separated by commas."_s, u"A,B"_s},
                     {u"pin"_s, u"Pin the note."_s},
                     {u"json"_s, u"Print the note as JSON."_s}},
         .maximumArguments = 1,
         .run = runNew,
         .completions = {u"@files"_s}},
        {.name = u"show"_s,
         .arguments = u"ID"_s,
         .summary = u"Print a note's text, just as it is kept."_s,
         .example = u"quibctl show 4F1C > plan.md"_s,
         .options = {{u"json"_s, u"Print everything known of the note as JSON."_s}},
         .minimumArguments = 1,
         .maximumArguments = 1,
         .run = runShow,
         .completions = {u"@notes"_s}},
        {.name = u"edit"_s,
         .arguments = u"ID FILE|-"_s,
         .summary = u"Replace a note's text by a file's. A text that equals the note's changes nothing."_s,
         .example = u"quibctl show 4F1C | sed 's/Monday/Tuesday/' | quibctl edit 4F1C -"_s,
         .options = {{u"append"_s, u"Add the file's text at the note's end, before its closing tag line."_s},
                     {u"prepend"_s, u"Add the file's text below the note's title."_s}},
         .minimumArguments = 2,
         .maximumArguments = 2,
         .run = runEdit,
         .completions = {u"@notes"_s, u"@files"_s}},
        {.name = u"list"_s,
         .arguments = {},
         .summary = u"List notes, one a line: identifier, date of the last change, marks (* pinned, t in the trash, "
                    u"a archived, ! in conflict), title."_s,
         .example = u"quibctl list --in tag:work/projects --limit 10\n"
                    u"quibctl list --in today --watch        one JSON line a change, until interrupted"_s,
         .options = {{u"in"_s,
                      u"One of notes (the default), untagged, todo, today, archive, trash, conflicts, all, tag:NAME."_s,
                      u"LIST"_s},
                     {u"search"_s, u"Only notes that the query finds."_s, u"QUERY"_s},
                     {u"limit"_s, u"At most N notes."_s, u"N"_s},
                     {u"watch"_s,
                      u"Go on and print each change of the list as a JSON line: first {\"change\":\"initial\","
                      u"\"notes\":[...]}, then \"insert\", \"delete\", \"move\" or \"update\" with \"index\" before "
                      u"all changes of one moment, \"newIndex\" after them, and \"note\"; \"initial\" comes again "
                      u"at midnight for a list that names the day."_s},
                     kJson},
         .run = runList},
        {.name = u"search"_s,
         .arguments = u"QUERY..."_s,
         .summary =
             u"List the notes that a query finds. Words and \"quoted phrases\" must all stand in the text, -word must "
             u"not; @tagged, @untagged, @todo, @done, @task, @images, @files, @attachments, @code, @today, "
             u"@yesterday, @last7days, @date(2026-01-31) and @cdate(...) ask for more."_s,
         .example = u"quibctl search 'plumber @todo @last7days'\n"
                    u"quibctl search -- -draft        words that begin with - go behind --"_s,
         .options = {{u"limit"_s, u"At most N notes."_s, u"N"_s}, kJson},
         .minimumArguments = 1,
         .maximumArguments = -1,
         .run = runSearch},
        {.name = u"tags"_s,
         .arguments = {},
         .summary = u"List the tags in use and how many notes each has."_s,
         .example = u"quibctl tags --json"_s,
         .options = {kJson},
         .run = runTags},
        {.name = u"tag rename"_s,
         .arguments = u"OLD NEW"_s,
         .summary =
             u"Rename a tag and the tags below it in the text of all notes. An existing NEW takes the notes in."_s,
         .example = u"quibctl tag rename work/alpha work/beta"_s,
         .minimumArguments = 2,
         .maximumArguments = 2,
         .run = runTagRename,
         .completions = {u"@tags"_s}},
        {.name = u"tag delete"_s,
         .arguments = u"NAME"_s,
         .summary = u"Take a tag out of the text of all notes. Notes of a nested tag stay under the tag above it."_s,
         .example = u"quibctl tag delete work/alpha"_s,
         .minimumArguments = 1,
         .maximumArguments = 1,
         .run = runTagDelete,
         .completions = {u"@tags"_s}},
    };
    commands += stateCommands();
    commands += QList<Command>{
        {.name = u"duplicate"_s,
         .arguments = u"ID"_s,
         .summary = u"Copy a note with its attachments and print the copy's identifier."_s,
         .example = u"quibctl duplicate 4F1C"_s,
         .minimumArguments = 1,
         .maximumArguments = 1,
         .run = runDuplicate,
         .completions = {u"@notes"_s}},
        {.name = u"merge"_s,
         .arguments = u"ID ID..."_s,
         .summary = u"Join notes, in the given order, into a new one, print its identifier, and trash the sources."_s,
         .example = u"quibctl merge 4F1C 77AB"_s,
         .minimumArguments = 2,
         .maximumArguments = -1,
         .run = runMerge,
         .completions = {u"@notes"_s}},
        {.name = u"attach"_s,
         .arguments = u"ID FILE"_s,
         .summary = u"Copy a file into the profile and put its marker at the note's end; prints the marker."_s,
         .example = u"quibctl attach 4F1C photo.jpg"_s,
         .minimumArguments = 2,
         .maximumArguments = 2,
         .run = runAttach,
         .completions = {u"@notes"_s, u"@files"_s}},
        {.name = u"open"_s,
         .arguments = u"URL|-"_s,
         .summary =
             u"Run a quib URL without a window and print its callbacks. Each is a line of JSON: which one it is, "
             u"its parameters, and the URL that would be opened, or null where the URL names none. Exits with "
             u"2 for a bad or missing parameter and 3 for what is not found."_s,
         .example = u"quibctl open 'quib://x-callback-url/create?title=Plan&tags=home'\n"
                    u"makes a note and prints its identifier"_s,
         .minimumArguments = 1,
         .maximumArguments = 1,
         .run = runOpen},
        {.name = u"token"_s,
         .arguments = {},
         .summary = u"Print the token with which URLs may read lists of notes."_s,
         .example = u"quibctl token --generate"_s,
         .options = {{u"generate"_s, u"Make one if there is none yet; one that is there is kept."_s}},
         .run = runToken},
        {.name = u"preferences"_s,
         .arguments = {},
         .summary = u"Print all preferences."_s,
         .example = u"quibctl preferences --json"_s,
         .options = {kJson},
         .run = runPreferences},
        {.name = u"preferences get"_s,
         .arguments = u"KEY"_s,
         .summary = u"Print one preference; nothing where it has no value."_s,
         .example = u"quibctl preferences get notesListSortBy"_s,
         .minimumArguments = 1,
         .maximumArguments = 1,
         .run = runPreferencesGet},
        {.name = u"preferences set"_s,
         .arguments = u"KEY VALUE"_s,
         .summary = u"Set one preference. Booleans are true or false."_s,
         .example = u"quibctl preferences set markdownCompatibilityMode true"_s,
         .minimumArguments = 2,
         .maximumArguments = 2,
         .run = runPreferencesSet},
        {.name = u"preferences reset"_s,
         .arguments = {},
         .summary = u"Set the preferences back to their defaults. Sync and log settings stay."_s,
         .example = u"quibctl preferences reset"_s,
         .run = runPreferencesReset},
        {.name = u"check"_s,
         .arguments = {},
         .summary = u"Look for anything wrong in the store, the attachments and what is derived from the texts."_s,
         .example = u"quibctl check --repair"_s,
         .options = {{u"repair"_s, u"Mend what can be mended without touching any text."_s}, kJson},
         .run = runCheck},
        {.name = u"inspect parse"_s,
         .arguments = u"[FILE|-]"_s,
         .summary = u"Print what Quib reads in a note's text, as JSON: title, tags, todo counts, sections."_s,
         .example = u"quibctl show 4F1C | quibctl inspect parse"_s,
         .options = {{u"syntax"_s, u"native (the default) or markdown."_s, u"S"_s}},
         .maximumArguments = 1,
         .run = runInspectParse,
         .completions = {u"@files"_s}},
        {.name = u"inspect style"_s,
         .arguments = u"[FILE|-]"_s,
         .summary = u"Print a note's text as it is styled, as JSON: buffer, attachments, runs of attributes."_s,
         .example = u"quibctl show 4F1C | quibctl inspect style --theme 'Dark Graphite'"_s,
         .options = {{u"syntax"_s, u"native (the default) or markdown."_s, u"S"_s},
                     {u"theme"_s, u"The theme's name."_s, u"T"_s},
                     {u"font"_s, u"The font theme's name."_s, u"F"_s}},
         .maximumArguments = 1,
         .run = runInspectStyle,
         .completions = {u"@files"_s},
         .needsFonts = true},
        {.name = u"inspect edit"_s,
         .arguments = u"[FILE|-]"_s,
         .summary =
             u"Print what edits of a styled text lead to, as JSON. The input is an object with \"text\", \"syntax\" "
             u"and \"edits\", each with \"location\", \"length\", \"string\" and \"selection\"."_s,
         .example = u"echo '{\"text\":\"*one\",\"edits\":[{\"location\":1,\"length\":0,\"string\":\" \"}]}' | "
                    u"quibctl inspect edit"_s,
         .maximumArguments = 1,
         .run = runInspectEdit,
         .completions = {u"@files"_s},
         .needsFonts = true},
        {.name = u"inspect theme"_s,
         .arguments = {},
         .summary = u"Print what a theme's colours, fonts and numbers come to, as JSON."_s,
         .example = u"quibctl inspect theme --theme Cobalt"_s,
         .options = {{u"theme"_s, u"The theme's name."_s, u"T"_s}, {u"font"_s, u"The font theme's name."_s, u"F"_s}},
         .run = runInspectTheme,
         .needsFonts = true},
        {.name = u"inspect render"_s,
         .arguments = u"[ID]"_s,
         .summary = u"Write a picture of a note as it is styled."_s,
         .example = u"quibctl inspect render 4F1C --theme Cobalt -o page.png"_s,
         .options = {{u"o"_s, u"The PNG file to write."_s, u"FILE"_s},
                     {u"text"_s, u"A file whose text is drawn, instead of a note."_s, u"FILE"_s},
                     {u"syntax"_s, u"native or markdown; otherwise that of the profile."_s, u"S"_s},
                     {u"theme"_s, u"The theme's name."_s, u"T"_s},
                     {u"font"_s, u"The font theme's name."_s, u"F"_s},
                     {u"width"_s, u"The page's width in points, 700 unless told."_s, u"N"_s},
                     {u"scale"_s, u"Pixels to a point, 2 unless told."_s, u"N"_s}},
         .maximumArguments = 1,
         .run = runInspectRender,
         .completions = {u"@notes"_s},
         .needsFonts = true},
        {.name = u"inspect language"_s,
         .arguments = u"[FILE|-]"_s,
         .summary = u"Name the programming language of a piece of code, or Unknown."_s,
         .example = u"quibctl inspect language build.py"_s,
         .maximumArguments = 1,
         .run = runInspectLanguage,
         .completions = {u"@files"_s}},
        {.name = u"inspect predicate"_s,
         .arguments = u"QUERY..."_s,
         .summary = u"Print the condition that a search query stands for, or null."_s,
         .example = u"quibctl inspect predicate 'plumber @todo'"_s,
         .minimumArguments = 1,
         .maximumArguments = -1,
         .run = runInspectPredicate},
        {.name = u"inspect highlight-pattern"_s,
         .arguments = u"QUERY..."_s,
         .summary = u"Print the regular expression that highlights a query's hits."_s,
         .example = u"quibctl inspect highlight-pattern 'plumber'"_s,
         .minimumArguments = 1,
         .maximumArguments = -1,
         .run = runInspectHighlightPattern},
        {.name = u"completion"_s,
         .arguments = u"bash|zsh|fish"_s,
         .summary = u"Print the completion script of a shell."_s,
         .example = u"quibctl completion bash > ~/.local/share/bash-completion/completions/quibctl"_s,
         .minimumArguments = 1,
         .maximumArguments = 1,
         .run = runCompletion,
         .completions = {u"bash"_s, u"zsh"_s, u"fish"_s}},
        {.name = u"manual"_s,
         .arguments = {},
         .summary = u"Print the manual page quibctl(1) in man's markup."_s,
         .example = u"quibctl manual | man -l -"_s,
         .run = runManual},
    };
    return commands;
}

} // namespace

const QList<Command> &allCommands()
{
    static const QList<Command> commands = makeCommands();
    return commands;
}

const Command *commandNamed(const QString &name)
{
    const QList<Command> &commands = allCommands();
    const auto found = std::find_if(commands.begin(), commands.end(),
                                    [&name](const Command &command) { return command.name == name; });
    return found == commands.end() ? nullptr : &*found;
}

QStringList absentCommands()
{
    return {u"import"_s, u"export"_s, u"backup"_s, u"sync"_s, u"convert"_s};
}

} // namespace quib::cli
