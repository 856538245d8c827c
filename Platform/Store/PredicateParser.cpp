#include "PredicateNode.h"

#include <QHash>

#include <cmath>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

constexpr double kSecondsFrom1970To2001 = 978307200;

struct Token
{
    enum class Kind : quint8
    {
        End,
        Word,
        Number,
        String,
        Argument,
        KeyArgument,
        Variable,
        Symbol
    };
    Kind kind = Kind::End;
    QString text;
    qsizetype place = 0;
};

bool isWordStart(QChar character)
{
    return character.isLetter() || character == u'_' || character == u'@';
}

/// Splits a format into tokens in one pass and builds the tree by descent. The first fault ends it.
class Parser
{
public:
    Parser(const QString &format, const QList<NSPredicateArgument> &arguments)
        : m_format(format)
        , m_arguments(arguments)
    {
        advance();
    }

    PredicateNodeRef parse(QString *fault)
    {
        PredicateNodeRef node = parseOr(0);
        if (m_fault.isEmpty() && m_token.kind != Token::Kind::End) {
            fail(u"unexpected \"%1\""_s.arg(m_token.text));
        }
        if (m_fault.isEmpty() && m_nextArgument < m_arguments.size()) {
            fail(u"%1 arguments too many"_s.arg(m_arguments.size() - m_nextArgument));
        }
        *fault = m_fault;
        return m_fault.isEmpty() ? node : nullptr;
    }

private:
    // Tokens

    void fail(const QString &what)
    {
        if (m_fault.isEmpty()) {
            m_fault = u"%1 at %2"_s.arg(what).arg(m_token.place);
            m_token = {};
            m_position = m_format.size();
        }
    }

    void advance()
    {
        while (m_position < m_format.size() && m_format[m_position].isSpace()) {
            ++m_position;
        }
        m_token = {Token::Kind::End, {}, m_position};
        if (m_position >= m_format.size()) {
            return;
        }
        const QChar first = m_format[m_position];
        if (first == u'"' || first == u'\'') {
            readString(first);
        } else if (first.isDigit() || (first == u'-' && nextIsDigit()) || (first == u'.' && nextIsDigit())) {
            readNumber();
        } else if (first == u'%') {
            const QChar second = m_position + 1 < m_format.size() ? m_format[m_position + 1] : QChar();
            if (second != u'@' && second != u'K') {
                fail(u"\"%\" without @ or K"_s);
                return;
            }
            take(second == u'@' ? Token::Kind::Argument : Token::Kind::KeyArgument, 2);
        } else if (first == u'$') {
            ++m_position;
            readWord(Token::Kind::Variable);
        } else if (isWordStart(first)) {
            readWord(Token::Kind::Word);
        } else {
            const QStringView rest = QStringView(m_format).sliced(m_position);
            for (const QStringView symbol : {u"&&", u"||", u"==", u"!=", u"<>", u"<=", u">=", u"=<", u"=>"}) {
                if (rest.startsWith(symbol)) {
                    take(Token::Kind::Symbol, 2);
                    return;
                }
            }
            take(Token::Kind::Symbol, 1);
        }
    }

    [[nodiscard]] bool nextIsDigit() const
    {
        return m_position + 1 < m_format.size() && m_format[m_position + 1].isDigit();
    }

    void take(Token::Kind kind, qsizetype length)
    {
        m_token.kind = kind;
        m_token.text = m_format.mid(m_position, length);
        m_position += length;
    }

    void readWord(Token::Kind kind)
    {
        const qsizetype start = m_position;
        while (m_position < m_format.size() &&
               (m_format[m_position].isLetterOrNumber() || m_format[m_position] == u'_' ||
                m_format[m_position] == u'@' || (m_format[m_position] == u'.' && m_position > start))) {
            ++m_position;
        }
        m_token.kind = kind;
        m_token.text = m_format.mid(start, m_position - start);
        if (m_token.text.isEmpty() || m_token.text.endsWith(u'.')) {
            fail(u"a key path that ends early"_s);
        }
    }

    void readNumber()
    {
        const qsizetype start = m_position++;
        while (m_position < m_format.size()) {
            const QChar character = m_format[m_position];
            const bool isSign = (character == u'+' || character == u'-') &&
                                (m_format[m_position - 1] == u'e' || m_format[m_position - 1] == u'E');
            if (!character.isDigit() && character != u'.' && character != u'e' && character != u'E' && !isSign) {
                break;
            }
            ++m_position;
        }
        m_token.kind = Token::Kind::Number;
        m_token.text = m_format.mid(start, m_position - start);
    }

    void readString(QChar quote)
    {
        QString text(u""_s);
        qsizetype i = m_position + 1;
        for (; i < m_format.size() && m_format[i] != quote; ++i) {
            if (m_format[i] != u'\\') {
                text.append(m_format[i]);
                continue;
            }
            if (++i >= m_format.size()) {
                break;
            }
            switch (m_format[i].unicode()) {
            case u'n':
                text.append(u'\n');
                break;
            case u'r':
                text.append(u'\r');
                break;
            case u't':
                text.append(u'\t');
                break;
            case u'u': {
                bool isNumber = false;
                const ushort unit = QStringView(m_format).mid(i + 1, 4).toUShort(&isNumber, 16);
                if (!isNumber || i + 4 >= m_format.size()) {
                    fail(u"\\u without four digits"_s);
                    return;
                }
                text.append(QChar(unit));
                i += 4;
                break;
            }
            default:
                text.append(m_format[i]);
            }
        }
        if (i >= m_format.size()) {
            fail(u"a string without its closing quote"_s);
            return;
        }
        m_token.kind = Token::Kind::String;
        m_token.text = text;
        m_position = i + 1;
    }

    [[nodiscard]] bool isWord(QStringView word) const
    {
        return m_token.kind == Token::Kind::Word && m_token.text.compare(word, Qt::CaseInsensitive) == 0;
    }
    [[nodiscard]] bool isSymbol(QStringView symbol) const
    {
        return m_token.kind == Token::Kind::Symbol && m_token.text == symbol;
    }
    bool acceptSymbol(QStringView symbol)
    {
        if (!isSymbol(symbol)) {
            return false;
        }
        advance();
        return true;
    }
    bool acceptWord(QStringView word)
    {
        if (!isWord(word)) {
            return false;
        }
        advance();
        return true;
    }
    void expectSymbol(QStringView symbol)
    {
        if (!acceptSymbol(symbol)) {
            fail(u"\"%1\" missing"_s.arg(symbol));
        }
    }

    // Grammar: OR over AND over NOT over a comparison or a parenthesis.

    PredicateNodeRef parseOr(int depth)
    {
        QList<PredicateNodeRef> nodes{parseAnd(depth)};
        while (m_fault.isEmpty() && (acceptWord(u"OR") || acceptSymbol(u"||"))) {
            nodes.append(parseAnd(depth));
        }
        return m_fault.isEmpty() ? joinedNode(PredicateNode::Kind::Or, nodes) : nullptr;
    }

    PredicateNodeRef parseAnd(int depth)
    {
        QList<PredicateNodeRef> nodes{parseNot(depth)};
        while (m_fault.isEmpty() && (acceptWord(u"AND") || acceptSymbol(u"&&"))) {
            nodes.append(parseNot(depth));
        }
        return m_fault.isEmpty() ? joinedNode(PredicateNode::Kind::And, nodes) : nullptr;
    }

    PredicateNodeRef parseNot(int depth)
    {
        if (depth >= kMaximumPredicateDepth) {
            fail(u"nested deeper than %1"_s.arg(kMaximumPredicateDepth));
            return nullptr;
        }
        if (acceptWord(u"NOT") || acceptSymbol(u"!")) {
            auto node = std::make_shared<PredicateNode>();
            node->kind = PredicateNode::Kind::Not;
            node->children.append(parseNot(depth + 1));
            return node;
        }
        if (acceptSymbol(u"(")) {
            PredicateNodeRef node = parseOr(depth + 1);
            expectSymbol(u")");
            return node;
        }
        if (isWord(u"TRUEPREDICATE") || isWord(u"FALSEPREDICATE")) {
            auto node = std::make_shared<PredicateNode>();
            node->kind = isWord(u"TRUEPREDICATE") ? PredicateNode::Kind::True : PredicateNode::Kind::False;
            advance();
            return node;
        }
        return parseComparison(depth);
    }

    PredicateNodeRef parseComparison(int depth)
    {
        auto node = std::make_shared<PredicateNode>();
        node->kind = PredicateNode::Kind::Comparison;
        node->isAny = acceptWord(u"ANY") || acceptWord(u"SOME");
        node->left = parseExpression(depth);
        parseOperator(*node);
        node->right = parseExpression(depth);
        return node;
    }

    void parseOperator(PredicateNode &node)
    {
        static const QHash<QString, PredicateOperator> symbols{{u"="_s, PredicateOperator::Equal},
                                                               {u"=="_s, PredicateOperator::Equal},
                                                               {u"!="_s, PredicateOperator::NotEqual},
                                                               {u"<>"_s, PredicateOperator::NotEqual},
                                                               {u"<"_s, PredicateOperator::Less},
                                                               {u"<="_s, PredicateOperator::LessOrEqual},
                                                               {u"=<"_s, PredicateOperator::LessOrEqual},
                                                               {u">"_s, PredicateOperator::Greater},
                                                               {u">="_s, PredicateOperator::GreaterOrEqual},
                                                               {u"=>"_s, PredicateOperator::GreaterOrEqual}};
        static const QHash<QString, PredicateOperator> words{{u"BEGINSWITH"_s, PredicateOperator::BeginsWith},
                                                             {u"ENDSWITH"_s, PredicateOperator::EndsWith},
                                                             {u"CONTAINS"_s, PredicateOperator::Contains},
                                                             {u"IN"_s, PredicateOperator::In}};
        const auto &table = m_token.kind == Token::Kind::Word ? words : symbols;
        const auto found = table.constFind(m_token.text.toUpper());
        if ((m_token.kind != Token::Kind::Word && m_token.kind != Token::Kind::Symbol) || found == table.constEnd()) {
            fail(u"no comparison"_s);
            return;
        }
        node.operation = *found;
        advance();
        if (acceptSymbol(u"[")) {
            const QString letters = m_token.text.toLower();
            if (m_token.kind != Token::Kind::Word ||
                (letters != u"c" && letters != u"d" && letters != u"cd" && letters != u"dc")) {
                fail(u"unknown comparison modifier"_s);
                return;
            }
            const auto bits = (letters.contains(u'c') ? 1 : 0) + (letters.contains(u'd') ? 2 : 0);
            node.fold = static_cast<FoldOption>(bits);
            advance();
            expectSymbol(u"]");
        }
    }

    PredicateExpression constant(NSPredicateArgument value)
    {
        PredicateExpression expression;
        expression.constant = std::move(value);
        advance();
        return expression;
    }

    std::optional<NSPredicateArgument> takeArgument()
    {
        if (m_nextArgument >= m_arguments.size()) {
            fail(u"an argument is missing"_s);
            return std::nullopt;
        }
        return m_arguments[m_nextArgument++];
    }

    PredicateExpression parseExpression(int depth)
    {
        PredicateExpression expression;
        if (depth >= kMaximumPredicateDepth) {
            fail(u"nested deeper than %1"_s.arg(kMaximumPredicateDepth));
            return expression;
        }
        switch (m_token.kind) {
        case Token::Kind::String:
            return constant(Value(m_token.text));
        case Token::Kind::Number:
            return parseNumber();
        case Token::Kind::Argument: {
            const auto argument = takeArgument();
            return argument ? constant(*argument) : expression;
        }
        case Token::Kind::KeyArgument: {
            const auto argument = takeArgument();
            const auto *value = argument ? std::get_if<Value>(&*argument) : nullptr;
            const auto *key = value != nullptr ? std::get_if<QString>(value) : nullptr;
            if (key == nullptr || key->isEmpty()) {
                fail(u"%K without a key"_s);
                return expression;
            }
            return parsePath(*key, {});
        }
        case Token::Kind::Variable:
            return parsePath(m_token.text.section(u'.', 1), m_token.text.section(u'.', 0, 0));
        case Token::Kind::Word:
            return parseWord(depth);
        case Token::Kind::Symbol:
            if (acceptSymbol(u"{")) {
                return parseList(depth);
            }
            [[fallthrough]];
        case Token::Kind::End:
            fail(u"an expression is missing"_s);
        }
        return expression;
    }

    PredicateExpression parseNumber()
    {
        bool isNumber = false;
        const qint64 whole = m_token.text.toLongLong(&isNumber);
        if (isNumber) {
            return constant(Value(whole));
        }
        const double number = m_token.text.toDouble(&isNumber);
        if (!isNumber || !std::isfinite(number)) {
            fail(u"not a number: \"%1\""_s.arg(m_token.text));
            return {};
        }
        return constant(Value(number));
    }

    PredicateExpression parseList(int depth)
    {
        QList<Value> values;
        while (m_fault.isEmpty() && !isSymbol(u"}")) {
            const PredicateExpression item = parseExpression(depth + 1);
            const auto *value = std::get_if<Value>(&item.constant);
            if (item.kind != PredicateExpression::Kind::Constant || value == nullptr) {
                fail(u"a list holds plain values only"_s);
                return {};
            }
            values.append(*value);
            if (!isSymbol(u"}")) {
                expectSymbol(u",");
            }
        }
        return constant(values);
    }

    PredicateExpression parseWord(int depth)
    {
        if (isWord(u"nil") || isWord(u"NULL")) {
            return constant(Value());
        }
        if (isWord(u"YES") || isWord(u"TRUE")) {
            return constant(Value(true));
        }
        if (isWord(u"NO") || isWord(u"FALSE")) {
            return constant(Value(false));
        }
        if (isWord(u"CAST")) {
            return parseDate();
        }
        if (isWord(u"SUBQUERY")) {
            return parseSubquery(depth);
        }
        const QString word = m_token.text;
        if (word.compare(u"self", Qt::CaseInsensitive) == 0) {
            return parsePath({}, {});
        }
        return parsePath(word.startsWith(u"self."_s, Qt::CaseInsensitive) ? word.mid(5) : word, {});
    }

    /// CAST(seconds since 2001, "NSDate")
    PredicateExpression parseDate()
    {
        advance();
        expectSymbol(u"(");
        bool isNumber = false;
        const double seconds = m_token.text.toDouble(&isNumber);
        if (m_token.kind != Token::Kind::Number || !isNumber || !std::isfinite(seconds)) {
            fail(u"CAST without a number"_s);
            return {};
        }
        advance();
        expectSymbol(u",");
        if (m_token.kind != Token::Kind::String || m_token.text != u"NSDate") {
            fail(u"CAST to anything but \"NSDate\""_s);
            return {};
        }
        advance();
        if (!isSymbol(u")")) {
            fail(u"\")\" missing"_s);
            return {};
        }
        return constant(Value(NSDate::dateWithTimeIntervalSince1970(seconds + kSecondsFrom1970To2001)));
    }

    PredicateExpression parseSubquery(int depth)
    {
        PredicateExpression expression;
        expression.kind = PredicateExpression::Kind::SubqueryCount;
        advance();
        expectSymbol(u"(");
        const PredicateExpression collection = parseExpression(depth + 1);
        if (collection.kind != PredicateExpression::Kind::KeyPath) {
            fail(u"SUBQUERY of something that is no key path"_s);
            return expression;
        }
        expression.path = collection.path;
        expression.variable = collection.variable;
        expectSymbol(u",");
        if (m_token.kind != Token::Kind::Variable || m_token.text.contains(u'.')) {
            fail(u"SUBQUERY without a variable"_s);
            return expression;
        }
        expression.conditionVariable = m_token.text;
        m_variables.append(expression.conditionVariable);
        advance();
        expectSymbol(u",");
        expression.condition = parseOr(depth + 1);
        m_variables.removeLast();
        expectSymbol(u")");
        // ".@count" follows without a blank; the tokeniser gives "." and "@count".
        if (!acceptSymbol(u".") || !acceptWord(u"@count")) {
            fail(u"SUBQUERY without .@count"_s);
        }
        return expression;
    }

    PredicateExpression parsePath(const QString &path, const QString &variable)
    {
        PredicateExpression expression;
        expression.kind = PredicateExpression::Kind::KeyPath;
        expression.path = path.split(u'.', Qt::SkipEmptyParts);
        expression.variable = variable;
        if (!variable.isEmpty() && !m_variables.contains(variable)) {
            fail(u"unknown variable \"$%1\""_s.arg(variable));
            return expression;
        }
        if (!expression.path.isEmpty() && expression.path.constLast() == u"@count") {
            expression.kind = PredicateExpression::Kind::Count;
            expression.path.removeLast();
        }
        for (const QString &component : std::as_const(expression.path)) {
            if (component.contains(u'@')) {
                fail(u"unknown key \"%1\""_s.arg(component));
                return expression;
            }
        }
        if (expression.path.size() > 8 ||
            (expression.kind == PredicateExpression::Kind::Count && expression.path.isEmpty())) {
            fail(u"a key path that leads nowhere"_s);
            return expression;
        }
        advance();
        return expression;
    }

    const QString &m_format;
    const QList<NSPredicateArgument> &m_arguments;
    qsizetype m_nextArgument = 0;
    qsizetype m_position = 0;
    Token m_token;
    QString m_fault;
    QStringList m_variables;
};

} // namespace

PredicateNodeRef parsePredicate(const QString &format, const QList<NSPredicateArgument> &arguments, NSError *error)
{
    QString fault;
    PredicateNodeRef node = Parser(format, arguments).parse(&fault);
    if (!node) {
        NSError::fill(error, u"NSPredicate"_s, 1, u"the condition does not parse: %1"_s.arg(fault));
    }
    return node;
}

PredicateNodeRef joinedNode(PredicateNode::Kind kind, const QList<PredicateNodeRef> &nodes)
{
    auto joined = std::make_shared<PredicateNode>();
    joined->kind = kind;
    for (const PredicateNodeRef &node : nodes) {
        if (node && node->kind == kind) {
            joined->children += node->children;
        } else if (node) {
            joined->children.append(node);
        }
    }
    if (joined->children.size() == 1) {
        return joined->children.constFirst();
    }
    if (joined->children.isEmpty()) {
        joined->kind = kind == PredicateNode::Kind::And ? PredicateNode::Kind::True : PredicateNode::Kind::False;
    }
    return joined;
}

} // namespace quib
