/** @file
 *  Texts and files for the terminal. The library's own texts are CP949; a terminal wants UTF-8.
 */
#pragma once

#include <string>
#include <string_view>

namespace host {

/** @p text of the library as UTF-8. A code that stands for no character is shown as "?", the others stay. */
std::string utf8(std::string_view text);

/** Prints "name: text", the text converted. */
void printField(const char* name, std::string_view text);

/** The file's content; throws std::runtime_error when it cannot be read. */
std::string readFile(const std::string& path);

/** Replaces the file's content; throws std::runtime_error when it cannot be written. */
void writeFile(const std::string& path, std::string_view content);

} // namespace host
