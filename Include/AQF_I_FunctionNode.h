// A node of the function catalogue as one client sees it: a folder, or a function, summary, operator, literal,
// operation or format. Below the root of a definition, folders hold folders and functions.
#pragma once

#include <vector>

#include "ZBLCore/I18NString.h"

#include "BrindleApi.h"

class AQF_I_FunctionDLL;
class AQF_I_FunctionParameter;

// What a node is, as GetType answers it.
enum EFunctionType : int {
    FT_unknown = 0,
    FT_group = 1,
    FT_function = 2,
    FT_summary = 3,
    FT_operator = 4,
    FT_literal = 5,
    FT_operation = 6,
    FT_format = 7
};

// Nodes belong to the definition that answered them and are one thread's at a time. Asking twice for one thing answers
// the same node, so nodes may be told apart by their addresses.
//
// A node without a description in the catalogue is a client's: it has an id and a name and nothing else. AddFolder
// makes one; a client may also derive a class of its own. What is said below of texts in a locale means the locale of
// the definition, and a text that is missing is empty. References to texts hold as long as the definition.
class BRINDLE_API AQF_I_FunctionNode {
public:
    // How well a function is supported, from not at all to fully. A negative value means that nothing is known yet;
    // only ConsolidateQosLevels of the definition takes one.
    enum EQoSLevel : int { EQoSUnavailable = 0, EQoSRestricted = 1, EQoSLimited = 2, EQoSOk = 3 };

    virtual ~AQF_I_FunctionNode();

    // Whether GetType answers FT_group.
    virtual bool GetIsGroup() = 0;

    // Appends the children that the definition's filters let pass: folders and operations in the order of the
    // description, then the other entries by name, then those folders and operations whose id begins with "advanced",
    // then what the client added. The first call settles the list: filters that are set later don't change it. The
    // first call on a node of the catalogue that has no described children answers nothing, even if the client has
    // added some; they come with the second.
    virtual void GetChildren(std::vector<AQF_I_FunctionNode*>& children) = 0;

    // As the description has them, whatever the locale.
    virtual const I18NString& GetCanonical() = 0;
    virtual const I18NString& GetCanonicalExpression() = 0;

    // The library that the function belongs to, or null.
    virtual AQF_I_FunctionDLL* GetDLL() = 0;

    virtual const I18NString& GetId() = 0;

    // The display name in the locale.
    virtual const I18NString& GetName() = 0;

    // As the description has them, whatever the locale.
    virtual const I18NString& GetReturnType() = 0;
    virtual const I18NString& GetFormatType() = 0;

    // The tip in the locale; the note on the function's level of support, if there is one, stands on a further line.
    virtual I18NString GetTip() = 0;

    // An EFunctionType. A client's node is a group if it has a name, else of unknown kind.
    virtual int GetType() = 0;

    // The syntax text in the locale.
    virtual const I18NString& GetSyntax() = 0;

    // The type of each parameter in order. The vector belongs to the thread and is overwritten by its next call on any
    // node.
    virtual const std::vector<I18NString>& GetParameterTypes() = 0;

    // Appends a new object for each parameter; they are the caller's.
    virtual void GetParameters(std::vector<AQF_I_FunctionParameter*>& parameters) = 0;

    // What the client has told the definition, merged levels first; otherwise what the function's rules say for the
    // query types and interfaces of the definition, and EQoSOk for a client's node.
    virtual EQoSLevel GetQosLevel() = 0;

    // "^" and a word: the text with the node's id, a point and the word as its key; "tip" and "syntax" alike without
    // the "^". The empty key: the name. "type": the word for the kind. "qosLevel": the word of the description's own
    // level, which is always "ok". Any other key: the further element of that name in the description. Empty if there
    // is none.
    virtual const I18NString& GetProperty(const I18NString& key) = 0;

    // Whether the interface code stands in the list of the nearest of this node and its folders that has one. Case of
    // the argument doesn't count, but a list that is written in lower case matches nothing. Without any list, whether
    // the catalogue knows the code at all.
    virtual bool GetIsSupportedByInterface(const I18NString& interfaceCode) = 0;

    // Answers the function or client's node that has the id, and changes nothing; else a new client's node below this
    // one. No one in the catalogue deletes that new node: it is the caller's, and must outlive the definition's use of
    // it.
    virtual AQF_I_FunctionNode* AddFolder(const I18NString& id, const I18NString& name) = 0;

    // Registers the client's node with the definition by id and name and puts it below this one. It stays the client's
    // and must outlive the definition's use of it. Answers 0.
    virtual int AddFunction(const I18NString& id, const I18NString& name, AQF_I_FunctionNode* node) = 0;
};
