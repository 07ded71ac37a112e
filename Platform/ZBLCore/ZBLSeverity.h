// How grave a failure is.
#pragma once

enum class ZBLSeverity : int { none = 0, error = 1, warning = 2, information = 3 };
