#include "QBLanguageAutoCompletionItemsProvider.h"

#include <Text/Folding.h>

#include <memory>

using namespace Qt::StringLiterals;

const QStringList &QBLanguageAutoCompletionItemsProvider::languageNames()
{
    // clang-format off
    static const QStringList names{
        u"actionscript"_s, u"abap"_s, u"apacheconf"_s, u"ada"_s, u"applescript"_s, u"apl"_s, u"arff"_s, u"arduino"_s,
        u"asm6502"_s, u"asciidoc"_s, u"autohotkey"_s, u"aspnet"_s, u"bash"_s, u"autoit"_s, u"batch"_s, u"basic"_s,
        u"brainfuck"_s, u"bison"_s, u"c"_s, u"bro"_s, u"clj"_s, u"clike"_s, u"coffee"_s, u"clojure"_s, u"cpp"_s,
        u"coffeescript"_s, u"csharp"_s, u"crystal"_s, u"css"_s, u"csp"_s, u"dart"_s, u"d"_s, u"diff"_s, u"DFS"_s,
        u"docker"_s, u"django"_s, u"dotnet"_s, u"dockerfile"_s, u"elisp"_s, u"eiffel"_s, u"elm"_s, u"elixir"_s,
        u"emacs-lisp"_s, u"emacs"_s, u"erlang"_s, u"erb"_s, u"flow"_s, u"extend"_s, u"fountain"_s, u"fortran"_s,
        u"gedcom"_s, u"fsharp"_s, u"git"_s, u"gherkin"_s, u"go"_s, u"glsl"_s, u"groovy"_s, u"graphql"_s,
        u"handlebars"_s, u"haml"_s, u"haxe"_s, u"haskell"_s, u"hsts"_s, u"hpkp"_s, u"http"_s, u"html"_s, u"icon"_s,
        u"ichigojam"_s, u"ini"_s, u"inform7"_s, u"io"_s, u"insertBefore"_s, u"java"_s, u"j"_s, u"jinja2"_s,
        u"javascript"_s, u"js"_s, u"jolie"_s, u"jsonp"_s, u"json"_s, u"julia"_s, u"jsx"_s, u"kotlin"_s, u"keyman"_s,
        u"less"_s, u"latex"_s, u"lisp"_s, u"liquid"_s, u"lolcode"_s, u"livescript"_s, u"makefile"_s, u"lua"_s,
        u"markup"_s, u"markdown"_s, u"mat"_s, u"markup-templating"_s, u"matlab"_s, u"mathml"_s, u"mel"_s, u"md"_s,
        u"monkey"_s, u"mizar"_s, u"n4jsd"_s, u"n4js"_s, u"nginx"_s, u"nasm"_s, u"nix"_s, u"nim"_s, u"objc"_s,
        u"nsis"_s, u"objectpascal"_s, u"objectivec"_s, u"opencl"_s, u"ocaml"_s, u"parigp"_s, u"oz"_s, u"pascal"_s,
        u"parser"_s, u"php"_s, u"perl"_s, u"powershell"_s, u"plsql"_s, u"prolog"_s, u"processing"_s, u"protobuf"_s,
        u"properties"_s, u"puppet"_s, u"pug"_s, u"py"_s, u"pure"_s, u"q"_s, u"python"_s, u"r"_s, u"qore"_s,
        u"reason"_s, u"rb"_s, u"rest"_s, u"renpy"_s, u"roboconf"_s, u"rip"_s, u"rust"_s, u"ruby"_s, u"sass"_s,
        u"sas"_s, u"scala"_s, u"sc"_s, u"scss"_s, u"scheme"_s, u"shell"_s, u"sh"_s, u"smarty"_s, u"smalltalk"_s,
        u"sql"_s, u"soy"_s, u"svg"_s, u"stylus"_s, u"tap"_s, u"swift"_s, u"textile"_s, u"tcl"_s, u"tsx"_s, u"ts"_s,
        u"twig"_s, u"tt2"_s, u"vb"_s, u"typescript"_s, u"velocity"_s, u"vbnet"_s, u"vhdl"_s, u"verilog"_s,
        u"visual-basic"_s, u"vim"_s, u"wiki"_s, u"wasm"_s, u"xeoracube"_s, u"xeora"_s, u"xojo"_s, u"xml"_s, u"yaml"_s,
        u"xquery"_s,
    };
    // clang-format on
    return names;
}

void QBLanguageAutoCompletionItemsProvider::updateCompletionForPartiaString(const QString &partialString,
                                                                            const QString & /*fullText*/)
{
    Items items;
    const QString folded = quib::foldedString(partialString, quib::FoldOption::CaseAndDiacritic);
    for (const QString &name : languageNames()) {
        if (!folded.isEmpty() &&
            quib::foldedString(name, quib::FoldOption::CaseAndDiacritic).contains(folded, Qt::CaseSensitive)) {
            items.append(std::make_shared<const QBLanguageCompletionItem>(name));
        }
    }
    setItemsForCompletion(std::move(items), partialString);
}
