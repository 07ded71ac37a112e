// Lines of structured SQL; what is done with them is QE_SqlText's.
#include "AQE_SqlLine.h"

AQE_SqlLine::AQE_SqlLine() = default;
AQE_SqlLine::AQE_SqlLine(int lineIndent, const I18NString& lineText) : indent(lineIndent), text(lineText) {}
AQE_SqlLine::~AQE_SqlLine() = default;
