// The fixed texts of the clocks. Like every text of the library they are kept in GBK until they
// are drawn; the Chinese ones are spelled out byte by byte, each with what it says.
#pragma once

namespace zel::clock_text {

// Separators and unit signs of the dates and times.
inline constexpr char kYear[] = "\xc4\xea";   // 年
inline constexpr char kMonth[] = "\xd4\xc2";  // 月
inline constexpr char kDay[] = "\xc8\xd5";    // 日
inline constexpr char kHour[] = "\xca\xb1";   // 时
inline constexpr char kMinute[] = "\xb7\xd6"; // 分
inline constexpr char kSecond[] = "\xc3\xeb"; // 秒

// The seven week days of week format 3, Monday first (the order of the glyph table).
inline constexpr const char *kWeekCjk[7] = {
    "\xd0\xc7\xc6\xda\xd2\xbb", // 星期一
    "\xd0\xc7\xc6\xda\xb6\xfe", // 星期二
    "\xd0\xc7\xc6\xda\xc8\xfd", // 星期三
    "\xd0\xc7\xc6\xda\xcb\xc4", // 星期四
    "\xd0\xc7\xc6\xda\xce\xe5", // 星期五
    "\xd0\xc7\xc6\xda\xc1\xf9", // 星期六
    "\xd0\xc7\xc6\xda\xc8\xd5", // 星期日
};
// All seven in one string: the test of a week cell and the reference of its height.
inline constexpr char kWeekCjkAll[] = "\xd0\xc7\xc6\xda\xd2\xbb\xd0\xc7\xc6\xda\xb6\xfe"
                                      "\xd0\xc7\xc6\xda\xc8\xfd\xd0\xc7\xc6\xda\xcb\xc4"
                                      "\xd0\xc7\xc6\xda\xce\xe5\xd0\xc7\xc6\xda\xc1\xf9"
                                      "\xd0\xc7\xc6\xda\xc8\xd5"; // 星期一 … 星期日

// 星期上午下午: what a cell compares the week string's height with.
inline constexpr char kCellCjk[] = "\xd0\xc7\xc6\xda\xc9\xcf\xce\xe7\xcf\xc2\xce\xe7";
// 年月日时分秒: the signs that the background places by the digits' height.
inline constexpr char kBackgroundCjk[] = "\xc4\xea\xd4\xc2\xc8\xd5\xca\xb1\xb7\xd6\xc3\xeb";

// Morning and afternoon (AM/PM table, sub kind 1; nothing builds it).
inline constexpr char kMorning[] = "\xc9\xcf\xce\xe7";   // 上午
inline constexpr char kAfternoon[] = "\xcf\xc2\xce\xe7"; // 下午

// The stems and branches (digit table, sub kind 2) and the zodiac (sub kind 3). Each byte is a
// glyph of its own, so these tables hold halves of characters; nothing builds them.
inline constexpr char kStemsAndBranches[] =
    "\xbc\xd7\xd2\xd2\xb1\xfb\xb6\xa1\xce\xec\xbc\xba\xb8\xfd\xd0\xc1\xc8\xc9\xb9\xef" // 甲…癸
    "\xd7\xd3\xb3\xf3\xd2\xfa\xc3\xae\xb3\xbd\xcb\xc8\xce\xe7\xce\xb4\xc9\xea\xd3\xcf\xd0\xe7"
    "\xba\xa5"; // 子…亥
inline constexpr char kZodiac[] = "\xca\xf3\xc5\xa3\xbb\xa2\xcd\xc3\xc1\xfa\xc9\xdf\xc2\xed"
                                  "\xd1\xf2\xba\xef\xbc\xa6\xb9\xb7\xd6\xed\xc4\xea"; // 鼠…猪年

} // namespace zel::clock_text
