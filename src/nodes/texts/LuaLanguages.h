#pragma once

#include "nodes/texts/TextLanguage.h"

namespace Nodes {

/// Formula of a simulated signal.
TextLanguage FormulaLanguage();
/// Script that tells whether an alarm is suppressed.
TextLanguage ConditionLanguage();
/// Script of an action.
TextLanguage ScriptLanguage();

} // namespace Nodes
