// A line of an AQE_SqlText that is written line by line. As a piece among others it renders to nothing.
#pragma once

#include "AQE_SqlTextFragment.h"
#include "BrindleApi.h"

// Texts share their lines: what one text does to a line is seen in all that hold it. So one thread at a time.
class BRINDLE_API AQE_SqlLine : public AQE_SqlTextFragment {
public:
    // Empty, without indentation.
    AQE_SqlLine();
    // `lineIndent` is a number of blanks; below zero it counts as none when the line is written.
    AQE_SqlLine(int lineIndent, const I18NString& lineText);
    ~AQE_SqlLine() override;

private:
    friend class AQE_SqlText;

    int indent = 0;
    I18NString text;
};
