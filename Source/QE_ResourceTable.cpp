// The constant strings, by number. Code refers to an entry by its number, so that entries are never moved or taken out;
// new ones go to the end. Entries may repeat.
#include "QE_ResourceTable.h"

const char* const kQEResourceTable[kQEResourceCount] = {
    // 0
    "(", " (", ")", "()", ") ", "[", ".[", " [", "]", "]]",
    // 10
    "].[", "].", "]=", "{", "{{", "}", "}}", " = ", "alias", "as \"",
    // 20
    "table", "column", ".", "\"", "\"\"", "'", "''", " ", ",", ", ",
    // 30
    "-", ":", ";", "\n", "\n\n", "refobjViaShortcut", "call", "call ", "DBFunction", "?",
    // 40
    ") is missing", "D", "T", "c", "select", "select ", "select distinct ", "distinct", "derivedtable", "joinedtable",
    // 50
    "groupby", " group by ", "filter", " filter ", "field", "procedure", "orderby", " order by ", " where ", " desc",
    // 60
    " asc", "DBKEY", "DATE", "TIMESTAMP", "TIME", "INTERVAL", " is NULL", " is not NULL", "Prompt", " WITH TIME ZONE",
    // 70
    "searchCaseWithElse", "searchCase", "simpleCaseWithElse", "simpleCase", "a", "'a'", "anydatatype", "for report",
    "FORANY", " --> ",
    // 80
    "case ", " else ", " end", "when ", " when ", " then ", "if ", "lookup ", " in ", " default ",
    // 90
    " between ", " and ", " like ", " escape ", " for ", " as ", " at ", " local", "error", "subquery",
    // 100
    "....", ".", "=", "<>", "<", "<=", ">", ">=", "+", "-",
    // 110
    "*", "/", "||", "all", "and", "any", "as", "at", "auto", "average",
    // 120
    "between", "bit", "bool", "both", "case", "cast", "char", "character", "contains", "count",
    // 130
    "count-rows", "current_date", "current_time", "current_timestamp", "current_user", "datatype", "date", "datetime",
    "day", "decimal",
    // 140
    "dec", "default", "double", "else", "empty", "end", "extract", "false", "first", "float",
    // 150
    "for", "from", " from ", "function", "hour", "if", "in", "in_range", "int", "integer",
    // 160
    "interval", "is", "keyword", "leading", "like", "literal", "lookup", "maximum", "minimum", "minute",
    // 170
    "missing", "month", "moving-average", "moving-total", "name", "namepart", "national", "nchar", "not", "null",
    // 180
    "numeric", "operator", "or", "pair", "percentage", "percentile", "position", "precision", "prefilter", "quantile",
    // 190
    "quartile", "rank", "real", "refobj", "report", "rows", "running-average", "running-count", "running-difference",
    "running-minimum",
    // 200
    "running-maximum", "running-total", "XMIN", "second", "smallint", "standard-deviation", "standard-deviation-pop",
    "starts", "string", "substring",
    // 210
    "tertile", "then", "time", "timezone_hour", "timezone_minute", "timestamp", "trailing", "true", "to", "total",
    // 220
    "trim", "tuple", "udf", "user", "user-classes", "varchar", "variance", "variance-pop", "varying", "when",
    // 230
    "with", "with ", "year", "ymd", "zone", " left outer join ", " right outer join ", " join ", " on ", "_env",
    // 240
    ".csv", ".rtm", ".cpf", "unknown", "dateTime", "timeInterval", "xsdString", "xsdDateTime", "xsdTime", "xsdDate",
    // 250
    "xsdDuration", "xsdDouble", "xsdShort", "xsdInt", "xsdLong", "xsdDecimal", "xsdFloat", "XML", "????", "char(",
    // 260
    "varchar(", "integer(", "float(", "decimal(", "binary(", "varbinary(", "integer(8)", "double precision", "N/A",
    "blob",
    // 270
    "text", "NULL", "Unknown", "LimitedLocal", "LimitedLocal;", "DatabaseOnly", "[Unknown SQL type]",
    "[Unsupported type]", "allRows", "Perf.DAM.",
    // 280
    " UNION ", "folder", "queryItemFolder", "calculation", "securityView", "package", "shortcut", "defaultLocale",
    "locale", "screenTip",
    // 290
    "description", "ID", "_ref", "_path", "dataSource", "functionSet", "queryItem", "querySubject", "start_atPath",
    "start_at",
    // 300
    "start_atRef", "_enumLabels", "Depth", "_securityView", "authoringLocale", "xml:lang", "_hiddenProperty",
    "Metadata", "Functions", "1",
    // 310
    "no_collections", "Property", "Constraint", "=", "", "*", "@", "tip", "syntax", "id",
    // 320
    "Id", "type", "group", "summary", "value", "MA", "functionsRoot", "FDS", "context", "canonical",
    // 330
    "returnType", "parameterType", "hide", "set", "exclude", "include", "escape", "mamsgs", "qemsgs", "rqpmsgs",
    // 340
    "RQP", "DATE '", "TIMESTAMP '", "TIME '", "INTERVAL '", "100", "date | dateTime", "VKE", "AQE_DmSqlPartialDataset",
    "GetEdgeIterator",
    // 350
    "AQE_DmSqlDimIterator", "FetchData", "AQE_QSMasterDatasetProxy", "GetDatasetInfo", "GetPartialDataset",
    "GetDetailQueries", "AQE_QSConnection", "Delete", "Create", "DoRequest",
    // 360
    "ENTER", "RETURN", "Execute", "AQE_QSParameterizedQuery", "MAProvider", "getConnection", "AMA_Connection",
    "MAProvider::getConnection", "release", "GetNumRows",
    // 370
    "First", "Next", "Previous", "GetRowCopy", "GoTo", "constructor", "destructor", "GetSession", "starts with",
    "is not",
    // 380
    "T", "if then else", "when then", " any", " all", "national character", "national character varying",
    "interval year", "interval month", "interval day",
    // 390
    "interval hour", "interval minute", "interval second", " to year", " to month", " to day", " to hour", " to minute",
    " to second", "character varying",
    // 400
    "nchar varying", "bit varying", "VKE_GetSession", "VKE_Connection::VKE_Connection",
    "VKE_Connection::~VKE_Connection", "VKE_Connection::DoRequest", "VKE_Session::~VKE_Session",
    "VKE_Session::GetConnection", "VKE_MasterDatasetProxy::~VKE_MasterDatasetProxy",
    "VKE_MasterDatasetProxy::GetDatasetInfo",
    // 410
    "VKE_MasterDatasetProxy::GetDetailQueries", "VKE_MasterDatasetProxy::GetPartialDataset",
    "VKE_ParameterizedQueryProxy::GetName", "VKE_ParameterizedQueryProxy::GetParameters",
    "VKE_ParameterizedQueryProxy::Execute", "edgeStartOrdinals[0]", "edgeNumOrdinals[0]", "AMA_Connection::doRequest",
    "AMA_Connection::release", "MAProvider::getConnection",
    // 420
    "<function name=\"", "\"><parameters>", "</parameters></function>", "<item name=\"", "\"><![CDATA[", "]]></item>",
    "this", "parameters", "connection", "request",
    // 430
    "AQE_DmSqlEdgeIterator", "aggregate", "/", "as \"", "QueryEngine", "QE", "\t", "time with time zone",
    "timestamp with time zone", "interval year-month",
    // 440
    "median", "hierarchize", "order", "generate", "post", "asc", "basc", "desc", "bdesc", "qosLevel",
    // 450
    "unavailable", "restricted", "limited", "ok", "YEAR", "MONTH", "DAY", "HOUR", "MINUTE", "SECOND",
    // 460
    "YEAR TO MONTH", "DAY TO HOUR", "DAY TO MINUTE", "DAY TO SECOND", "HOUR TO MINUTE", "HOUR TO SECOND",
    "MINUTE TO SECOND", "vendor", "datasourceQueryType", "providerType",
    // 470
    "interface", "parameter", "dll", "optional", "section", "TO", "ends", "ends with", "cumulative-percentage",
    "percentile25",
    // 480
    "percentile75", "share", "stability-factor", "HEAD", "formatType", "self", "before", "after", "beforewithmember",
    "numberFormat",
    // 490
    "percentFormat", "currencyFormat", "dateFormat", "dateTimeFormat", "timeFormat", "intervalFormat", "stringFormat",
    "( ", " )", "within set",
    // 500
    "operation", "localtime", "localtimestamp", "nvarchar", "_format", "format", "OQP", "QFW", "QueryFramework",
    "OlapQueryProvider",
    // 510
    "RelationalQueryProvider", "minOccurs", "maxOccurs", "N", "within aggregate", "within detail", "over aggregate",
    "over detail", "over set", "canonicalExpression",
    // 520
    " | ", " TOP ", "crx", "nullable"};
