// The words of SQL and of the query language.
#include "QUSQLKeywordTable.h"

const char* const kSqlReservedWords[kSqlReservedWordCount] = {
    // A
    "ABSOLUTE", "ACTION", "ADD", "ADMIN", "AFTER", "AGGREGATE", "ALIAS", "ALL", "ALLOCATE", "ALTER", "AND", "ANY",
    "ARE", "ARRAY", "AS", "ASC", "ASSERTION", "AT", "AUTHORIZATION",
    // B
    "BEFORE", "BEGIN", "BINARY", "BIT", "BLOB", "BOOLEAN", "BOTH", "BREADTH", "BY",
    // C
    "CALL", "CASCADE", "CASCADED", "CASE", "CAST", "CATALOG", "CHAR", "CHARACTER", "CHECK", "CLASS", "CLOB", "CLOSE",
    "COLLATE", "COLLATION", "COLUMN", "COMMIT", "COMPLETION", "CONNECT", "CONNECTION", "CONSTRAINT", "CONSTRAINTS",
    "CONSTRUCTOR", "CONTINUE", "CORRESPONDING", "CREATE", "CROSS", "CUBE", "CURRENT", "CURRENT_DATE", "CURRENT_PATH",
    "CURRENT_ROLE", "CURRENT_TIME", "CURRENT_TIMESTAMP", "CURRENT_USER", "CURSOR", "CYCLE",
    // D
    "DATA", "DATE", "DAY", "DEALLOCATE", "DEC", "DECIMAL", "DECLARE", "DEFAULT", "DEFERRABLE", "DEFERRED", "DELETE",
    "DEPTH", "DEREF", "DESC", "DESCRIBE", "DESCRIPTOR", "DESTROY", "DESTRUCTOR", "DETERMINISTIC", "DICTIONARY",
    "DIAGNOSTICS", "DISCONNECT", "DISTINCT", "DOMAIN", "DOUBLE", "DROP", "DYNAMIC",
    // E
    "EACH", "ELSE", "END", "END-EXEC", "EQUALS", "ESCAPE", "EVERY", "EXCEPT", "EXCEPTION", "EXEC", "EXECUTE",
    "EXTERNAL",
    // F
    "FALSE", "FETCH", "FIRST", "FLOAT", "FOR", "FOREIGN", "FOUND", "FROM", "FREE", "FULL", "FUNCTION",
    // G
    "GENERAL", "GET", "GLOBAL", "GO", "GOTO", "GRANT", "GROUP", "GROUPING",
    // H
    "HAVING", "HOST", "HOUR",
    // I
    "IDENTITY", "IGNORE", "IMMEDIATE", "IN", "INDICATOR", "INITIALIZE", "INITIALLY", "INNER", "INOUT", "INPUT",
    "INSERT", "INT", "INTEGER", "INTERSECT", "INTERVAL", "INTO", "IS", "ISOLATION", "ITERATE",
    // J
    "JOIN",
    // K
    "KEY",
    // L
    "LANGUAGE", "LARGE", "LAST", "LATERAL", "LEADING", "LEFT", "LESS", "LEVEL", "LIKE", "LIMIT", "LOCAL", "LOCALTIME",
    "LOCALTIMESTAMP", "LOCATOR",
    // M
    "MAP", "MATCH", "MINUTE", "MODIFIES", "MODIFY", "MODULE", "MONTH",
    // N
    "NAMES", "NATIONAL", "NATURAL", "NCHAR", "NCLOB", "NEW", "NEXT", "NO", "NONE", "NOT", "NULL", "NUMERIC",
    // O
    "OBJECT", "OF", "OFF", "OLD", "ON", "ONLY", "OPEN", "OPERATION", "OPTION", "OR", "ORDER", "ORDINALITY", "OUT",
    "OUTER", "OUTPUT",
    // P
    "PAD", "PARAMETER", "PARAMETERS", "PARTIAL", "PATH", "POSTFIX", "PRECISION", "PREFIX", "PREORDER", "PREPARE",
    "PRESERVE", "PRIMARY", "PRIOR", "PRIVILEGES", "PROCEDURE", "PUBLIC",
    // R
    "READ", "READS", "REAL", "RECURSIVE", "REF", "REFERENCES", "REFERENCING", "RELATIVE", "RESTRICT", "RESULT",
    "RETURN", "RETURNS", "REVOKE", "RIGHT", "ROLE", "ROLLBACK", "ROLLUP", "ROUTINE", "ROW", "ROWS",
    // S
    "SAVEPOINT", "SCHEMA", "SCROLL", "SCOPE", "SEARCH", "SECOND", "SECTION", "SELECT", "SEQUENCE", "SESSION",
    "SESSION_USER", "SET", "SETS", "SIZE", "SMALLINT", "SOME", "SPACE", "SPECIFIC", "SPECIFICTYPE", "SQL",
    "SQLEXCEPTION", "SQLSTATE", "SQLWARNING", "START", "STATE", "STATEMENT", "STATIC", "STRUCTURE", "SYSTEM_USER",
    // T
    "TABLE", "TEMPORARY", "TERMINATE", "THAN", "THEN", "TIME", "TIMESTAMP", "TIMEZONE_HOUR", "TIMEZONE_MINUTE", "TO",
    "TRAILING", "TRANSACTION", "TRANSLATION", "TREAT", "TRIGGER", "TRUE",
    // U
    "UNDER", "UNION", "UNIQUE", "UNKNOWN", "UNNEST", "UPDATE", "USAGE", "USER", "USING",
    // V
    "VALUE", "VALUES", "VARCHAR", "VARIABLE", "VARYING", "VIEW",
    // W
    "WHEN", "WHENEVER", "WHERE", "WITH", "WITHOUT", "WORK", "WRITE",
    // Y
    "YEAR",
    // Z
    "ZONE"};

// By length.
const char* const kQueryLanguageWords[kQueryLanguageWordCount] = {
    // 2
    "as", "at", "by", "in", "is", "ln", "no", "of", "on", "or", "to",
    // 3
    "abs", "all", "and", "any", "asc", "avg", "day", "dec", "end", "exp", "for", "int", "max", "min", "mod", "not",
    "out", "row", "set", "sum", "top",
    // 4
    "both", "call", "case", "cast", "ceil", "char", "cube", "date", "desc", "else", "from", "full", "hour", "into",
    "join", "last", "left", "like", "null", "over", "perc", "rank", "ravg", "real", "rmax", "rmin", "rsum", "rows",
    "sets", "some", "sqrt", "then", "time", "trim", "true", "user", "when", "with", "xavg", "xmax", "xmin", "xsum",
    "year", "zone",
    // 5
    "count", "cross", "dbkey", "false", "first", "float", "floor", "group", "inner", "local", "lower", "month", "nchar",
    "ntile", "nulls", "order", "outer", "power", "range", "rdiff", "right", "table", "union", "upper", "using", "where",
    "xlast", "xperc", "xrank",
    // 6
    "_local", "bigint", "cursor", "create", "delete", "double", "escape", "except", "exists", "filter", "having",
    "insert", "minute", "nullif", "others", "rcount", "rollup", "scroll", "second", "select", "stddev", "update",
    "values", "window", "within", "xcount", "xfirst", "xratio", "xntile",
    // 7
    "_cursor", "_rowset", "between", "boolean", "ceiling", "current", "decimal", "declare", "extract", "integer",
    "leading", "natural", "numeric", "qualify", "tertile", "unknown", "varchar", "varying", "var_pop", "without",
    "xstddev",
    // 8
    "coalesce", "distinct", "filename", "grouping", "interval", "national", "nvarchar", "position", "smallint",
    "snapshot", "trailing", "variance", "var_samp", "xtertile",
    // 9
    "character", "cume_dist", "intersect", "following", "localtime", "partition", "precision", "preceding", "prefilter",
    "recursive", "returning", "substring", "timestamp", "updatable", "unbounded", "xvariance",
    // 10
    "bit_length", "dense_rank", "last_value", "percentile", "row_number", "stddev_pop", "xmovingavg", "xmovingsum",
    // 11
    "char_length", "first_value", "stddev_samp", "xstddev_pop",
    // 12
    "current_date", "current_time", "octet_length", "percent_rank",
    // 13
    "timezone_hour", "xvariance_pop",
    // 14
    "localtimestamp",
    // 15
    "percentile_cont", "percentile_disc", "ratio_to_report", "timezone_minute",
    // 16
    "character_length",
    // 17
    "current_timestamp"};
