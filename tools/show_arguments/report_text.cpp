#include "report_text.h"

#include "printable.h"

#include <algorithm>
#include <iterator>

namespace {

Cell show(const std::string& text) {
    return {printable(text), text.empty() ? Style::Faint : Style::Plain};
}

Cell show(const std::optional<std::string>& text) {
    return text ? show(*text) : Cell{"(undefined)", Style::Faint};
}

Cell show(bool answer) {
    return {answer ? "yes" : "no"};
}

void showResult(const Observation& observation, TextPage& page) {
    const OrvexTestCommandLineParser& parser = observation.parser;
    const Style style = observation.succeeded ? Style::Good : Style::Bad;
    std::vector<Row> rows = {{{"parse"}, {observation.succeeded ? "succeeded" : "failed", style}}};
    if (!observation.succeeded) {
        rows.push_back({{"reason"}, {observation.failure}});
    }
    rows.push_back({{"application name"}, show(parser.getApplicationName())});
    rows.push_back({{"help requested"}, show(parser.helpRequested())});
    rows.push_back({{"wait before exit"}, show(parser.waitBeforeExit())});
    rows.push_back({{"output file"}, show(parser.getOutputFilename())});
    rows.push_back({{"XML report file"}, show(parser.getXmlFilename())});
    rows.push_back({{"transport layers"}, show(parser.getTlList())});
    std::string label = "test paths";
    for (const std::string& path : parser.getTestPaths()) {
        rows.push_back({{label}, show(path)});
        label.clear();
    }
    if (parser.getTestPaths().empty()) {
        rows.push_back({{label}, {"(none)", Style::Faint}});
    }
    page.title("Result");
    page.rows(2, rows);
}

void showRecord(const TestRunInformation& information, TextPage& page) {
    std::vector<Row> rows;
    for (const RecordField& field : recordFields) {
        rows.push_back({{field.name}, show(information.*field.text)});
    }
    page.title("Test-run record");
    page.rows(2, rows);
}

void showEnvironment(const std::vector<ChangedVariable>& environment, TextPage& page) {
    std::vector<Row> rows;
    rows.reserve(environment.size());
    for (const ChangedVariable& variable : environment) {
        rows.push_back({{variable.name}, show(variable.before), show(variable.after)});
    }
    page.title("Environment");
    if (rows.empty()) {
        page.rows(2, {{{"(unchanged)", Style::Faint}}});
    } else {
        page.table({"variable", "before", "after"}, rows);
    }
}

std::string padded(const std::string& text, std::size_t columns) {
    return text + std::string(columns - std::min(columns, text.size()), ' ');
}

Row showGiven(const Given& given) {
    const std::string note = given.note.empty() ? "" : " (" + given.note + ")";
    Cell value = given.value ? show(*given.value) : Cell{"flag", Style::Faint};
    value.text += note;
    const bool counts = given.outcome == Outcome::Won || given.outcome == Outcome::Collected ||
                        given.outcome == Outcome::Counted;
    return {{padded(describe(given.outcome), 9), counts ? Style::Good : Style::Bad},
            {padded(given.source, 17)},
            value};
}

void showValues(const Trace& trace, TextPage& page) {
    page.title("Values");
    const auto showGroup = [&page](const Row& heading, const std::vector<Given>& given) {
        std::vector<Row> rows;
        std::transform(given.begin(), given.end(), std::back_inserter(rows), showGiven);
        page.rows(2, {heading});
        page.rows(4, rows);
    };
    for (const TracedOption& option : trace.options) {
        Row heading = {{printable(typed(option.name))}};
        if (option.known != nullptr) {
            heading.push_back({option.known->sets, Style::Faint});
        }
        showGroup(heading, option.given);
    }
    if (!trace.testPaths.empty()) {
        showGroup({{"test paths"}}, trace.testPaths);
    }
    if (trace.options.empty() && trace.testPaths.empty()) {
        page.rows(2, {{{"(none)", Style::Faint}}});
    }
}

std::string describeToken(const TracedToken& token) {
    const std::string role = describe(token.role);
    return token.role == TokenRole::Value ? role + " of " + printable(typed(token.option)) : role;
}

void showTokens(const Trace& trace, TextPage& page) {
    page.title("Tokens");
    for (const TracedSource& source : trace.sources) {
        if (source.state != SourceState::Scanned) {
            const std::string message = source.message.empty() ? "" : ": " + source.message;
            page.rows(2, {{{padded(source.name, 17)}, {describe(source.state) + message, Style::Faint}}});
            continue;
        }
        std::vector<Row> rows;
        for (const TracedToken& token : source.tokens) {
            rows.push_back({{padded(describeToken(token), 20), Style::Faint}, show(token.text)});
        }
        page.rows(2, {{{source.name}}});
        page.rows(4, rows);
    }
}

}  // namespace

void reportAsText(const Observation& observation, PageFormat format, std::ostream& out) {
    TextPage page(out, format);
    showResult(observation, page);
    showRecord(observation.parser.getTestRunInformation(), page);
    showEnvironment(observation.environment, page);
    showValues(observation.trace, page);
    showTokens(observation.trace, page);
}
