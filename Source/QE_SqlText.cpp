// Texts are walked with a stack of their own, so that nesting costs no machine stack. One walk serves the three forms,
// which differ in what they write before a text, for a piece, and behind a text.
#include "AQE_SqlText.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <iterator>
#include <new>
#include <string_view>
#include <typeinfo>
#include <utility>

#include "ZBLIDOM/ZBLIDOM_Node.h"

#include "AQE_SqlTextGeneral.h"

#include "QE_SqlTextOutput.h"

using brindle::AppendBlanks;
using brindle::AppendNewLine;
using brindle::ShiftedIndent;

namespace {

constexpr const char* kStatement = "sql";
constexpr const char* kOnNewLine = "pss";
constexpr const char* kIndented = "i";
constexpr const char* kTransparent = "**d**";

constexpr int kFurtherIndent = 4;

// Pieces lie apart in memory, and in a long text in none of the caches: the walk asks for them this many ahead.
constexpr std::ptrdiff_t kLookAhead = 8;

// About what a piece takes in SQL, its spacing included, so that a long text is seldom copied while it grows.
constexpr std::size_t kUsualPieceBytes = 10;

constexpr std::string_view kPhrases[] = {"select ",       "distinct ", "from ",       "order by ",     "group by ",
                                         "partition by ", " over ",    " nulls last", " within group "};

// The fragments of texts that are being destroyed; null unless one is. The destructor of the outermost text empties the
// list, those of texts farther down only put theirs there, so that none runs inside another.
using FragmentList = std::vector<AUT_RefPtr<AQE_SqlTextFragment>>;
constinit thread_local std::vector<FragmentList>* goingFragments = nullptr;

// Whether the walk may go into the fragment by itself. A class derived from AQE_SqlText renders in its own way.
bool IsPlainText(const AQE_SqlTextFragment& fragment) { return &typeid(fragment) == &typeid(AQE_SqlText); }

} // namespace

struct AQE_SqlText::SqlForm {
    using Level = int;

    I18NString& out;

    Level Open(const AQE_SqlText& text, int indent) {
        if (text.name == kStatement) out.appendAscii("/* version 1.1 */\n");
        if (text.name == kOnNewLine) AppendNewLine(out, indent);
        return text.name == kIndented ? ShiftedIndent(indent, kFurtherIndent) : indent;
    }
    void Write(AQE_SqlTextFragment& fragment, int& indent) { fragment.StreamToSql(out, indent); }
    void Close(const AQE_SqlText&) {}
};

struct AQE_SqlText::MarkupForm {
    struct Level {};

    I18NString& out;

    Level Open(const AQE_SqlText& text, Level) {
        if (text.name == kStatement)
            out.appendAscii("<?xml-stylesheet type=\"text/xsl\" href=\".\\fixformatsql.xsl\"?>\n");
        if (text.name == kTransparent) return {};
        out.appendAscii("<").append(text.name);
        if (text.lineNumber != 0) {
            char digits[12];
            const char* const end = std::to_chars(std::begin(digits), std::end(digits), text.lineNumber).ptr;
            out.appendAscii(" line=\"").appendAscii({digits, end}).appendAscii("\"");
        }
        out.appendAscii(">");
        return {};
    }
    void Write(AQE_SqlTextFragment& fragment, Level) { fragment.StreamToXmlHtml(out); }
    void Close(const AQE_SqlText& text) {
        if (text.name != kTransparent) out.appendAscii("</").append(text.name).appendAscii(">");
    }
};

struct AQE_SqlText::DocumentForm {
    using Level = ZBLIDOM_Element;

    ZBLIDOM_Document& document;

    Level Open(const AQE_SqlText& text, const ZBLIDOM_Element& parent) {
        if (text.name == kTransparent) return parent;
        const ZBLIDOM_Element element = document.createElement(text.name);
        parent.appendChild(element);
        return element;
    }
    void Write(AQE_SqlTextFragment& fragment, ZBLIDOM_Element& parent) { fragment.StreamToXmlDom(document, parent); }
    void Close(const AQE_SqlText&) {}
};

template <class Form>
void AQE_SqlText::Walk(Form form, typename Form::Level level) {
    struct Frame {
        AQE_SqlText* text;
        Fragments::const_iterator next;
        typename Form::Level level;
    };
    std::vector<Frame> stack;
    stack.push_back({this, fragments.begin(), form.Open(*this, level)});
    while (!stack.empty()) {
        Frame& frame = stack.back();
        AQE_SqlText* child = nullptr;
        for (const auto end = frame.text->fragments.cend(); frame.next != end && child == nullptr; ++frame.next) {
            if (end - frame.next > kLookAhead) __builtin_prefetch(frame.next[kLookAhead].get());
            AQE_SqlTextFragment& fragment = **frame.next;
            if (IsPlainText(fragment))
                child = static_cast<AQE_SqlText*>(&fragment);
            else
                form.Write(fragment, frame.level);
        }
        if (child != nullptr) {
            stack.push_back({child, child->fragments.begin(), form.Open(*child, frame.level)});
        } else {
            form.Close(*frame.text);
            stack.pop_back();
        }
    }
}

AQE_SqlText::AQE_SqlText() = default;
AQE_SqlText::AQE_SqlText(const I18NString& textName) : name(textName) {}
AQE_SqlText::AQE_SqlText(const I18NString& textName, int number) : name(textName), lineNumber(number) {}
AQE_SqlText::AQE_SqlText(const AQE_SqlText&) = default;

AQE_SqlText& AQE_SqlText::operator=(const AQE_SqlText& other) {
    if (this == &other) return *this;
    // The other may hang on a piece of this one, which lives until the copy goes.
    AQE_SqlText copy(other);
    lines.swap(copy.lines);
    std::swap(currentLine, copy.currentLine);
    fragments.swap(copy.fragments);
    name.swap(copy.name);
    lineNumber = other.lineNumber;
    return *this;
}

AQE_SqlText::~AQE_SqlText() {
    if (fragments.empty()) return;
    if (goingFragments != nullptr) {
        try {
            goingFragments->push_back(std::move(fragments));
        } catch (const std::bad_alloc&) {
            // They stay here and go with this text, at the cost of machine stack.
        }
        return;
    }
    std::vector<FragmentList> going;
    goingFragments = &going;
    fragments.clear();
    while (!going.empty()) {
        const FragmentList last = std::move(going.back());
        going.pop_back();
    }
    goingFragments = nullptr;
}

AQE_SqlTextFragment::ESqlFragementType AQE_SqlText::GetFragmentType() const { return SFT_Text; }
void AQE_SqlText::StreamToXmlHtml(I18NString& out) { Walk(MarkupForm{out}, {}); }
void AQE_SqlText::StreamToXmlDom(ZBLIDOM_Document& document, ZBLIDOM_Element& parent) {
    Walk(DocumentForm{document}, parent);
}
void AQE_SqlText::StreamToSql(I18NString& out, int& indent) { Walk(SqlForm{out}, indent); }

I18NString AQE_SqlText::GetText() {
    I18NString text;
    if (!fragments.empty()) {
        int indent = 0;
        text.reserve(std::min(I18NString::kMaxBytes, fragments.size() * kUsualPieceBytes));
        StreamToSql(text, indent);
        return text;
    }
    if (lines.size() == 1 && lines.front()->indent != 0) text.append(U'\n');
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (i > 0) text.append(U'\n');
        AppendBlanks(text, lines[i]->indent);
        text.append(lines[i]->text);
    }
    return text;
}

template <class Fragment, class Content>
void AQE_SqlText::AddFragment(const Content& content) {
    fragments.push_back(AUT_RefPtr<AQE_SqlTextFragment>(new Fragment(content)));
}

void AQE_SqlText::AddBooleanOperator(const I18NString& text) { AddFragment<AQE_SqlTextBooleanOperator>(text); }
void AQE_SqlText::AddColumn(const I18NString& text) { AddFragment<AQE_SqlTextColumn>(text); }
void AQE_SqlText::AddFunction(const I18NString& text) { AddFragment<AQE_SqlTextFunction>(text); }
void AQE_SqlText::AddFunctionKeyword(const I18NString& text) { AddFragment<AQE_SqlTextFunctionKeyword>(text); }
void AQE_SqlText::AddGeneral(const I18NString& text) { AddFragment<AQE_SqlTextGeneral>(text); }
void AQE_SqlText::AddOperator(const I18NString& text) { AddFragment<AQE_SqlTextOperator>(text); }
void AQE_SqlText::AddTable(const I18NString& text) { AddFragment<AQE_SqlTextTable>(text); }
void AQE_SqlText::AddKeyword(AQE_SqlTextKeyword::ESqlTextKeyword keyword) { AddFragment<AQE_SqlTextKeyword>(keyword); }
void AQE_SqlText::AddPunctuation(AQE_SqlTextPunctuation::ESqlTextPunctuation punctuation) {
    AddFragment<AQE_SqlTextPunctuation>(punctuation);
}

void AQE_SqlText::AddText(AQE_SqlText* child) {
    if (child == nullptr || child == this) return;
    fragments.push_back(AUT_RefPtr<AQE_SqlTextFragment>(child));
}

void AQE_SqlText::AddLine() { AddLine(0, I18NString()); }

void AQE_SqlText::AddLine(int indent, const I18NString& text) {
    AddLine(AUT_RefPtr<AQE_SqlLine>(new AQE_SqlLine(indent, text)));
}

void AQE_SqlText::AddLine(const AUT_RefPtr<AQE_SqlLine>& line) {
    if (line.isNull()) return;
    lines.push_back(line);
    currentLine = lines.back();
}

void AQE_SqlText::AddText(const AQE_SqlText& other) {
    // Counted first, for a text that is added to itself.
    const std::size_t count = other.lines.size();
    for (std::size_t i = 0; i < count; ++i)
        AddLine(other.lines[i]);
}

void AQE_SqlText::MergeText(const AQE_SqlText& other) {
    const std::size_t count = other.lines.size();
    if (count > 0) AppendString(other.lines.front()->text);
    for (std::size_t i = 1; i < count; ++i)
        AddLine(other.lines[i]);
}

void AQE_SqlText::AppendString(const I18NString& text) {
    if (lines.empty()) AddLine();
    currentLine->text.append(text);
}

void AQE_SqlText::AppendKeyword(sqlKeyword phrase) {
    const auto index = static_cast<std::size_t>(phrase);
    AppendString(I18NString(index < std::size(kPhrases) ? kPhrases[index] : std::string_view()));
}

void AQE_SqlText::PrependString(const I18NString& text) {
    if (lines.empty()) AddLine();
    lines.front()->text.insert(0, text);
}

void AQE_SqlText::Indent(int blanks) {
    for (const AUT_RefPtr<AQE_SqlLine>& line : lines)
        line->indent = ShiftedIndent(line->indent, blanks);
}

void AQE_SqlText::IndentNotFirstLine(int blanks) {
    for (std::size_t i = 1; i < lines.size(); ++i)
        lines[i]->indent = ShiftedIndent(lines[i]->indent, blanks);
}

bool AQE_SqlText::Empty() { return lines.empty(); }
bool AQE_SqlText::EmptyMig() { return fragments.empty(); }
int AQE_SqlText::NumLines() const { return static_cast<int>(lines.size()); }

void AQE_SqlText::AddBooleanOperatorMig(const I18NString& text) {
    AddBooleanOperator(text);
    AppendString(" ");
    AppendString(text);
    AppendString(" ");
}

void AQE_SqlText::AddColumnMig(const I18NString& text) {
    AddColumn(text);
    AddLine(0, text);
}

void AQE_SqlText::AddFunctionMig(const I18NString& text) {
    AddFunction(text);
    AppendString(text);
}

void AQE_SqlText::AddFunctionKeywordMig(const I18NString& text) {
    AddFunctionKeyword(text);
    AppendString(" " + text + " ");
}

void AQE_SqlText::AddGeneralMig(const I18NString& text) {
    AddGeneral(text);
    AppendString(text);
}

void AQE_SqlText::AddOperatorMig(const I18NString& text) {
    AddOperator(text);
    AppendString(" ");
    AppendString(text);
    AppendString(" ");
}

void AQE_SqlText::AddTableMig(const I18NString& text) {
    AddTable(text);
    AddLine(0, text);
}

void AQE_SqlText::AddKeywordMig(AQE_SqlTextKeyword::ESqlTextKeyword keyword) {
    AddKeyword(keyword);
    const I18NString phrase = AQE_SqlTextKeyword::GetSpelling(keyword) + " ";
    if (keyword == AQE_SqlTextKeyword::STK_As)
        AppendString(" " + phrase);
    else
        AddLine(0, phrase);
}

void AQE_SqlText::AddPunctuationMig(AQE_SqlTextPunctuation::ESqlTextPunctuation punctuation) {
    AddPunctuation(punctuation);
    switch (punctuation) {
    case AQE_SqlTextPunctuation::STP_OpeningBracket:
        return AppendString("(");
    case AQE_SqlTextPunctuation::STP_ClosingBracket:
        return AppendString(")");
    case AQE_SqlTextPunctuation::STP_Comma:
        return AppendString(",");
    }
    AppendString("*E*AddPunctuationMig*E*");
}

void AQE_SqlText::AddTextMig(const AQE_SqlText& other) { AddText(new AQE_SqlText(other)); }
