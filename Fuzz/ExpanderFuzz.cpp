// Laws of the expander. Every operation is tried on the same text and parameters; they must agree with each other on
// what they make of it, or fail alike, and after each of them, failed or not, the expander must still do its work.
#include <cstddef>
#include <cstdint>
#include <exception>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "PlatformHooks.h"
#include "ZBLIDOM/ZBLIDOM_Node.h"

#include "AQM_I_MacroExpander.h"
#include "QEException.h"

#include "ExpanderInput.h"
#include "FuzzCheck.h"
#include "LimitedHeap.h"

namespace brindle_fuzz {
namespace {

using PositionInfo = AQM_I_MacroExpander::PositionInfo;

// Ample for what a short text asks for in earnest, little enough for texts that double themselves to end soon.
constexpr std::size_t kHeapBytes = 256 << 10;

// How an operation ended. Two that saw the same input ended alike unless memory was short, which strikes where it will.
struct Outcome {
    enum EEnd { succeeded, failed, outOfMemory, lookupsSpent };
    EEnd end = succeeded;
    std::string failure;
    std::int64_t position = -1;

    bool IsLike(const Outcome& other) const {
        return end == outOfMemory || other.end == outOfMemory || (end == other.end && failure == other.failure);
    }
};

std::string Describe(const QEException& failure) {
    return std::string(failure.getThrowableName()) + " " + std::to_string(failure.getCode()) + " " +
           std::string(failure.getMessage().bytes());
}

std::string Describe(const QEExceptionExtended& failure) {
    return Describe(static_cast<const QEException&>(failure)) + " at " + std::to_string(failure.GetPosition()) +
           (failure.GetIsMacro() ? " in a block" : "");
}

class Expansion {
public:
    explicit Expansion(ExpanderInput& input) : m_input(input) {
        m_recoveryParameters.Set("a", "value");
        m_recoveryCoordinator->AddParameterMap(&m_recoveryParameters);
    }

    void CheckAll() {
        const Outcome parsed = CheckPositions();
        CheckDocument(parsed);
        const Outcome analyzed = CheckAnalysis(parsed);
        CheckExpansion(analyzed);
        for (const I18NString& name : m_input.names)
            CheckIdentifier(name);
    }

private:
    template <class Operation>
    Outcome Try(Operation operation) {
        m_input.parameters.Refill();
        const Outcome outcome = End(operation);
        const I18NString recovered = m_expander.Expand("#$a#", m_recoveryCoordinator.get());
        RequireSame(recovered.bytes(), "value", "the expander works on after any outcome");
        return outcome;
    }

    template <class Operation>
    Outcome End(Operation operation) {
        try {
            const HeapLimit limit(kHeapBytes);
            operation();
            return {};
        } catch (const QEExceptionExtended& failure) {
            return {Outcome::failed, Describe(failure), failure.GetPosition()};
        } catch (const QEException& failure) {
            return {Outcome::failed, Describe(failure), -1};
        } catch (const LookupsSpent&) {
            return {Outcome::lookupsSpent, {}, -1};
        } catch (const std::bad_alloc&) {
            return {Outcome::outOfMemory, {}, -1};
        } catch (const std::length_error&) {
            return {Outcome::outOfMemory, {}, -1};
        } catch (const std::exception& failure) {
            BreakLaw("only exceptions of the library leave", failure.what());
        } catch (...) {
            BreakLaw("only exceptions of the library leave");
        }
    }

    Outcome CheckPositions() {
        const Outcome outcome = Try([this] { m_expander.GetMacroPositions(m_input.text, m_positions); });
        // A failure without a position is that of a text too complex.
        Require(outcome.position == -1 || (outcome.position >= 1 && outcome.position <= m_input.text.size() + 1),
                "the position of a failure lies in the text");
        const std::string_view bytes = m_input.text.bytes();
        std::int64_t lastEnd = -1;
        for (const PositionInfo& block : m_positions) {
            Require(block.startPosition > lastEnd, "blocks are in order");
            Require(block.endPosition > block.startPosition, "a block ends behind its start");
            Require(static_cast<std::size_t>(block.endPosition) < bytes.size(), "blocks lie inside the text");
            lastEnd = block.endPosition;
            Require(bytes[static_cast<std::size_t>(block.startPosition)] == '#', "a block starts with '#'");
            Require(bytes[static_cast<std::size_t>(block.endPosition)] == '#', "a block ends with '#'");
            CheckComment(block);
        }
        return outcome;
    }

    void CheckComment(const PositionInfo& block) {
        if (block.commentStart == -1) {
            Require(block.commentEnd == -1, "a comment without start has no end");
            return;
        }
        Require(block.startPosition < block.commentStart && block.commentStart < block.commentEnd &&
                    block.commentEnd < block.endPosition,
                "a comment lies inside its block");
        const auto start = static_cast<std::size_t>(block.commentStart);
        const std::string_view mark = m_input.text.bytes().substr(start, 2);
        Require(mark == "/*" || mark == "//", "a comment starts with its mark");
    }

    void CheckDocument(const Outcome& parsed) {
        ZBLIDOM_Node document;
        const Outcome outcome = Try([&] { document = m_expander.GetAsXml(m_input.text); });
        Require(outcome.IsLike(parsed), "the document is refused where the positions are");
        if (outcome.end != Outcome::succeeded) return;
        std::string text;
        std::size_t blocks = 0;
        for (ZBLIDOM_Node node = document; node; node = Next(node)) {
            if (node.getNodeType() == ZBLIDOM_TEXT_NODE) text += node.getNodeValue().bytes();
            if (node.getNodeType() == ZBLIDOM_ELEMENT_NODE && node.getNodeName() == "macro") ++blocks;
        }
        RequireSame(text, m_input.text.bytes(), "the text nodes of the document are the text");
        Require(blocks == m_positions.size() || parsed.end == Outcome::outOfMemory, "each block is an element");
    }

    // The next node in document order; null behind the last.
    static ZBLIDOM_Node Next(ZBLIDOM_Node node) {
        if (ZBLIDOM_Node child = node.getFirstChild()) return child;
        while (node && !node.getNextSibling())
            node = node.getParentNode();
        return node ? node.getNextSibling() : node;
    }

    Outcome CheckAnalysis(const Outcome& parsed) {
        const Outcome outcome = Try([this] { m_expander.Analyze(m_input.text, m_input.parameters.Get(), m_analyzed); });
        if (parsed.end == Outcome::failed)
            Require(outcome.IsLike(parsed), "analysis refuses what the positions refuse");
        if (parsed.end != Outcome::succeeded) return outcome;
        Require(m_analyzed.size() <= m_positions.size(), "analysis finds no other blocks");
        if (outcome.end == Outcome::succeeded)
            Require(m_analyzed.size() == m_positions.size(), "analysis finds all blocks");
        for (std::size_t index = 0; index < m_analyzed.size(); ++index)
            Require(m_analyzed[index].startPosition == m_positions[index].startPosition &&
                        m_analyzed[index].endPosition == m_positions[index].endPosition,
                    "blocks are where their positions are");
        return outcome;
    }

    void CheckExpansion(const Outcome& analyzed) {
        I18NString result("as before");
        bool isReplaced = false;
        int count = 0;
        m_input.parameters.Refill();
        const Outcome outcome = End([&] {
            isReplaced = m_expander.Expand(m_input.text, m_input.parameters.Get(), result);
            count = m_expander.GetReplacementCount();
        });
        Require(outcome.IsLike(analyzed), "expansion and analysis end alike");
        Try([] {});
        if (outcome.end != Outcome::succeeded)
            RequireSame(result.bytes(), "as before", "a failed expansion leaves the result as it was");
        if (outcome.end != Outcome::succeeded || analyzed.end != Outcome::succeeded) return;
        RequireSame(result.bytes(), PutTogether(), "plain text and the blocks' values make up the expansion");
        Require(count == static_cast<int>(m_analyzed.size()), "all blocks are counted");
        Require(isReplaced == (count > 0), "the answer tells whether a block was replaced");
    }

    std::string PutTogether() const {
        const std::string_view bytes = m_input.text.bytes();
        std::string text;
        std::size_t copied = 0;
        for (const PositionInfo& block : m_analyzed) {
            text += bytes.substr(copied, static_cast<std::size_t>(block.startPosition) - copied);
            text += block.expansion.bytes();
            copied = static_cast<std::size_t>(block.endPosition) + 1;
        }
        text += bytes.substr(copied);
        return text;
    }

    // The empty name and one that begins with ']' can't be written, and behind a line feed nothing is looked at.
    void CheckIdentifier(const I18NString& name) {
        const std::string_view bytes = name.bytes();
        if (bytes.empty() || bytes.front() == ']' || bytes.find('\n') != std::string_view::npos) return;
        AQU_ParameterMapApp map("_env", 0);
        map.Set(name, "found");
        const std::unique_ptr<AQU_I_ParameterAccessCoordinator> coordinator(AQU_I_ParameterAccessCoordinator::Create());
        coordinator->AddParameterMap(&map);
        I18NString found;
        Try([&] {
            found = m_expander.Expand("#$" + m_expander.MakeValidMacroIdentifier(name) + "#", coordinator.get());
        });
        RequireSame(found.bytes(), "found", "a name made valid finds its value");
    }

    ExpanderInput& m_input;
    AQM_I_MacroExpander m_expander;
    AQU_ParameterMapApp m_recoveryParameters{"_env", 0};
    std::unique_ptr<AQU_I_ParameterAccessCoordinator> m_recoveryCoordinator{AQU_I_ParameterAccessCoordinator::Create()};
    std::vector<PositionInfo> m_positions;
    std::vector<PositionInfo> m_analyzed;
};

} // namespace
} // namespace brindle_fuzz

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    brindle_platform::setUserConfigurationFile("/dev/null");
    brindle_platform::overrideOption("General Options", "MultiValuesAllowed", "1");
    // What is made once in a process is not to count against the first input.
    AQM_I_MacroExpander().Expand("#$a#", nullptr);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    brindle_fuzz::ExpanderInput input({reinterpret_cast<const char*>(data), size});
    brindle_fuzz::Expansion(input).CheckAll();
    return 0;
}
