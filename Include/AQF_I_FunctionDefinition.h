// The catalogue of functions as one client sees it: which functions a query may use on a data source, in which folders,
// with which parameters, under which names in a locale, and how well they are supported.
//
//     std::unique_ptr<AQF_I_FunctionDefinition> functions(AQF_I_FunctionDefinition::Create("en-us"));
//     functions->AddInterface("OR");
//     std::vector<AQF_I_FunctionNode*> children;
//     functions->GetRootNode()->GetChildren(children);
//
// A client creates a definition on a started catalogue, says what it is for (interfaces, vendors, contexts, kinds),
// then walks it from the root or looks functions up. The first definition of a process reads the catalogue's files.
#pragma once

#include <vector>

#include "ZBLCore/I18NLocale.h"
#include "ZBLCore/I18NString.h"

#include "AQF_I_FunctionNode.h"
#include "BrindleApi.h"

class AQF_I_FunctionDLL;

// A filter that is empty lets everything pass, with one exception: formats are shown only when AddFunctionType has
// asked for them. Filters act on lookups by name at once and on a folder until its children are asked for the first
// time. Lookups that find nothing answer null or an empty text. Output vectors are appended to.
//
// One thread at a time, the nodes included; different definitions may be used on different threads. A definition must
// not outlive the end of the catalogue.
class BRINDLE_API AQF_I_FunctionDefinition {
public:
    // Deletes the nodes of the catalogue that this definition answered, but no client's node.
    virtual ~AQF_I_FunctionDefinition();

    // Further words for which a function may be meant, such as "macro".
    virtual void AddContext(const I18NString& context) = 0;
    // "tabular", "crosstab" and "macro".
    virtual void AddDefaultContexts() = 0;

    // A data source interface by its code, in any case. It says which rules of support count, and also adds a query
    // type: "relational" if the code occurs in the text that lists those interfaces, even as a part of another code,
    // else "multidimensional". It hides nothing. The list is the user option "RelInterfaces" of "QueryEngine", by
    // default the built-in relational codes; the first definition with a locale reads it for the process, and before
    // that no query type is added.
    virtual void AddInterface(const I18NString& interfaceCode) = 0;
    virtual void AddQueryType(const I18NString& queryType) = 0;

    // "function", "summary", "operator", "literal", "operation" or "format"; any other word has no effect.
    virtual void AddFunctionType(const I18NString& word) = 0;

    // A vendor that the catalogue doesn't know is logged and has no effect.
    virtual void AddVendor(const I18NString& vendor) = 0;

    // No filter acts here. Ids are case-sensitive. A function of the catalogue comes before a client's node. Folders of
    // the catalogue aren't found.
    virtual AQF_I_FunctionNode* GetFunctionById(const I18NString& id) = 0;

    // Every visible function of that display name in any case, in the order in which names were read, then the client's
    // node of exactly that name.
    virtual void GetFunctionsByName(const I18NString& name, std::vector<AQF_I_FunctionNode*>& functions) = 0;
    // The first of those.
    virtual AQF_I_FunctionNode* GetFunctionByName(const I18NString& name) = 0;

    // All libraries in order of name. They belong to the definition.
    virtual void GetDLLs(std::vector<AQF_I_FunctionDLL*>& libraries) = 0;

    // The locale of the texts: that which was found for the one asked for, or "en-us".
    virtual const I18NLocale& GetLocale() = 0;
    // The names of the locales that the catalogue has texts in, sorted.
    virtual void GetLocales(std::vector<I18NString>& locales) = 0;

    // Every vendor in the order of first appearance, and its name in the locale at the same place.
    virtual void GetVendors(std::vector<I18NString>& vendors, std::vector<I18NString>& names) = 0;
    virtual I18NString GetVendorName(const I18NString& vendor) = 0;

    // Every interface code that the catalogue names, in upper case, sorted.
    virtual void GetInterfaces(std::vector<I18NString>& interfaces) = 0;

    virtual AQF_I_FunctionNode* GetRootNode() = 0;

    // Makes the client's node known by its id; an id that a client's node has already stays with that node.
    virtual void AddFunction(const I18NString& id, AQF_I_FunctionNode* node) = 0;

    // Records what the client knows of a function's support; it comes before the function's rules. Set overwrites, and
    // leaves an earlier note if the note is empty. Merge consolidates with what was merged before and collects the
    // notes, one on a line, the first line being empty where the first statement had no note; a merged level comes
    // before a set one.
    virtual void SetQosLevel(const I18NString& id, AQF_I_FunctionNode::EQoSLevel level, const I18NString& note) = 0;
    virtual void MergeQosLevel(const I18NString& id, AQF_I_FunctionNode::EQoSLevel level, const I18NString& note) = 0;

    virtual void ShowHiddenFunctions() = 0;
    // Only entries that are marked as dimensional pass. Folders have no such mark, so none is shown; what is in them is
    // found by name and id.
    virtual void ShowDimensionalFunctionsOnly() = 0;

    // As AddFunction, and by its name too, which lookups find in exactly this spelling. A name that is taken stays
    // with the node that has it.
    virtual void AddNamedFunction(const I18NString& id, const I18NString& name, AQF_I_FunctionNode* node) = 0;

    // The definition is the caller's. The locale may be a name in any spelling of case; one that the catalogue lacks
    // is served by a locale of the same language, else by "en-us". What fails while the files are read passes out, and
    // the next call reads again.
    static AQF_I_FunctionDefinition* Create(const I18NLocale& locale);
    // In "en-us".
    static AQF_I_FunctionDefinition* Create();

    // Of all functions with this display name in any case, visible or not: the return type of the first in which "crx"
    // doesn't occur, else of the first. Throws QEException (150, message 902933051 with the name) if there is none.
    // The reference holds until the end of the catalogue, as do those of the next two. Each reads the files as Create
    // does if nobody has before. Any thread.
    static const I18NString& GetFunctionReturnType(const I18NString& name);
    // Of the same functions the first format type that isn't empty; may be empty. Fails alike.
    static const I18NString& GetFunctionFormatType(const I18NString& name);
    // The format type of the entry with this id. An unknown id is logged and answers the empty text.
    static const I18NString& GetFormatForSpec(const I18NString& spec);

    // What two levels make together, as for two data sources in one query: unavailable in one and fine in the other
    // is restricted. `a` may be negative for none yet, which answers `b`. Not symmetric for values that are no level.
    static AQF_I_FunctionNode::EQoSLevel ConsolidateQosLevels(AQF_I_FunctionNode::EQoSLevel a,
                                                              AQF_I_FunctionNode::EQoSLevel b);
};
