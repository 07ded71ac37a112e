// A run's record in the performance file, and the file's head. The record is made in memory; the lock is held only
// while its text goes to the file, so that no two records mingle and no run waits for the making of another's.
#include <cstdint>
#include <ios>
#include <locale>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Mortise/AUT_I_FileSupport.h"
#include "ZBLCFGAPI/ZBLConfigurationFactory.h"
#include "ZBLCore/ZBLUtSystemInfo.h"

#include "AQE_PerfData.h"
#include "TarnPerformance.h"

#include "QE_PerfRegistry.h"

namespace {

constexpr const char* kDefaultDirectory = "../logs";
constexpr int kFileNameStamp = 0;
constexpr int kTabsOfComponents = 3;

// The name "et" has two meanings: end in RP, elapsed time elsewhere.
constexpr std::string_view kIndex = R"(	<ElementAndAttributeIndex>
		<Elements>
			<entry name="RP" value="RequestPerformance"/>
			<entry name="RS" value="RequestSummary"/>
			<entry name="RQ" value="RequestQuery"/>
			<entry name="C" value="Component"/>
			<entry name="CF" value="ComponentFunction"/>
		</Elements>
		<Attributes>
			<entry name="n" value="name"/>
			<entry name="st" value="StartTime"/>
			<entry name="et" value="EndTime"/>
			<entry name="et" value="ElapsedTime"/>
			<entry name="nc" value="NumCalls"/>
			<entry name="rN" value="RunNumber"/>
			<entry name="RC" value="ReportContext"/>
			<entry name="LMs" value="LogMessages"/>
			<entry name="LM" value="LogMessage"/>
		</Attributes>
	</ElementAndAttributeIndex>
)";

std::int64_t TotalTime(const AQE_QueryPerfData& query) {
    std::int64_t ticks = 0;
    for (const AQE_ComponentPerfData& component : query.m_components)
        ticks += component.m_time;
    return QE_PerfInUnits(ticks);
}

void OutputFreeText(std::ostream& stream, const char* element, const I18NString& text) {
    if (!text.empty()) stream << "\t\t<" << element << "><![CDATA[" << text << "]]></" << element << ">\n";
}

void OutputMessages(std::ostream& stream, const std::vector<I18NString>& messages, const std::string& indent) {
    if (messages.empty()) return;
    stream << indent << "<LMs>\n";
    for (const I18NString& message : messages)
        stream << indent << "<LM><![CDATA[" << message << "]]></LM>\n";
    stream << indent << "</LMs>\n";
}

} // namespace

// Names go into attributes as they are, with nothing escaped.
void AQE_PerfData::OutputQueryData(std::ostream& stream, AQE_QueryPerfData& query, int tabs,
                                   const QE_PerfNames& names) {
    const std::string indent(static_cast<std::size_t>(tabs), '\t');
    const std::string inner = indent + '\t';
    for (std::size_t c = query.m_components.size(); c-- > 0;) {
        const AQE_ComponentPerfData& component = query.m_components[c];
        if (component.m_calls == 0) continue;
        stream << indent << "<C n=\"" << names.ComponentName(c) << "\" et=\"" << QE_PerfInUnits(component.m_time)
               << "\" >\n";
        for (std::size_t f = 0; QE_PerfVerbosity >= EPV_Functions && f < component.m_functions.size(); ++f) {
            const AQE_FunctionPerfData& function = component.m_functions[f];
            if (function.m_calls == 0) continue;
            stream << inner << "<CF n=\"" << names.FunctionName(c, f) << "\" et=\"" << QE_PerfInUnits(function.m_time)
                   << "\" nc=\"" << function.m_calls << "\" />\n";
        }
        OutputMessages(stream, query.m_messages[c], inner);
        stream << indent << "</C>\n";
    }
}

void AQE_PerfData::ToXMLFile() {
    m_endTime = QE_PerfTimeStamp();
    const std::int32_t verbosity = QE_PerfVerbosity;
    const QE_PerfNames names = QE_PerfCopyNames(m_summary.m_components.size());

    std::ostringstream stream;
    stream.exceptions(std::ios_base::badbit); // memory that runs out must not cut a record short
    stream.imbue(std::locale::classic());     // the process's own locale may group digits
    stream << "\t<RP n=\"" << m_summary.m_name << "\" rN=\"" << m_runNumber << "\" st=\"" << m_startTime << "\" et=\""
           << m_endTime << "\" status=\"" << (m_success ? "SUCCESS" : "FAIL") << "\" >\n";
    OutputFreeText(stream, "RC", m_reportContext);
    OutputFreeText(stream, "sessionID", m_sessionID);
    OutputFreeText(stream, "requestID", m_requestID);
    stream << "\t\t<RS et=\"" << TotalTime(m_summary) << "\" >\n";
    const bool isOnlyQuery = verbosity >= EPV_Queries && m_queries.size() == 1;
    if (verbosity >= EPV_Components)
        OutputQueryData(stream, isOnlyQuery ? m_queries[0] : m_summary, kTabsOfComponents, names);
    stream << "\t\t</RS>\n";
    if (verbosity >= EPV_Queries && m_queries.size() >= 2) {
        for (AQE_QueryPerfData& query : m_queries) {
            stream << "\t\t<RQ n=\"" << query.m_name << "\" et=\"" << TotalTime(query) << "\" >\n";
            OutputQueryData(stream, query, kTabsOfComponents, names);
            stream << "\t\t</RQ>\n";
        }
    }
    stream << "\t</RP>\n";

    const ZBLThreadGuard guard(QE_PerfLock);
    if (QE_PerfGuarded().m_file == nullptr) CreateXMLFile();
    QE_PerfGuarded().m_file->Write(stream.view());
}

// Called under the lock. A file that can't be made is a stream that swallows: the run goes on, and so do later ones.
void AQE_PerfData::CreateXMLFile() {
    QE_PerfState& state = QE_PerfGuarded();
    const I18NString directory =
        ZBLConfigurationFactory::getInstance().getFullPath(state.m_logDir.value_or(kDefaultDirectory));
    if (!AUT_I_FileSupport::DirectoryExists(directory)) AUT_I_FileSupport::MakeDirectory(directory);
    const I18NString stem = directory + "/Performance_" + ZBLUtSystemInfo::getTimeStamp(kFileNameStamp);

    std::string head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<PerformanceData PID=\"";
    head += std::to_string(ZBLUtSystemInfo::getProcessId()) + "\" >\n";
    head.append(kIndex);
    // Behind all that needs memory, which would leave an empty file.
    auto file = std::make_unique<QE_PerfStream>(stem.bytes(), ".xml");
    file->Write(head);
    state.m_file = std::move(file);
}
