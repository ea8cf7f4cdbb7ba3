// String and number helpers of the code base, as far as session descriptions need them.
#pragma once

#include "CommonMediaExport.h"

#include <string>
#include <string_view>
#include <vector>

/// Static helpers; the class is never instantiated.
class COMMONMEDIA_EXPORT VideoUtils {
public:
    VideoUtils() = delete;

    /// Appends the parts of `text` between occurrences of `separator` to `out`, in order.
    ///
    ///     split(out, "a;;b;", ";")   appends "a", "", "b", ""
    ///     split(out, "", ";")        appends nothing
    ///     split(out, "a;b", "")      appends "a;b": an empty separator does not separate
    static void split(std::vector<std::string>& out, std::string_view text, std::string_view separator);

    /// True for one or more decimal digits and nothing else: no sign, no blank, no empty text.
    static bool IsNumber(std::string_view text) noexcept;

    static std::string ConvertInt(int number);           ///< decimal text of a number
    static std::string ConvertUInt(unsigned int number); ///< decimal text of a number
};
