// Everything that the accessors of a parser tell, the record included.

#ifndef ORVEX_TESTS_PARSER_STATE_H
#define ORVEX_TESTS_PARSER_STATE_H

#include "support/parser_snapshot.h"

#include <string>

// The entries that snapshotOf gives for the parser, the two accessors that pick out a single text, and
// the fields of the record as "record.group" and so on.
inline Snapshot readState(const OrvexTestCommandLineParser& parser) {
    Snapshot state = snapshotOf(parser);
    state["firstTestPath"] = parser.getFirstTestPath();
    state["reportFile"] = parser.getTdcDravikXmlFilename();
    for (const auto& [field, text] : snapshotOf(parser.getTestRunInformation())) {
        state["record." + field] = text;
    }
    return state;
}

#endif
