#pragma once
/* Output: tables for people, JSON for programs. */

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

namespace veskctl {

/* Prints the rows below the titles, aligned by the width that the texts have on a terminal. The last column is not
 * padded, so it is the place for texts of any length or direction. */
void print_table(const std::vector<std::string> &titles, const std::vector<std::vector<std::string>> &rows);

/* The value as JSON over several lines, without the last line end. What could steer a terminal is written as an escape,
 * which a reader of JSON turns back. */
std::string json_text(const nlohmann::json &value);

void print_json(const nlohmann::json &value);

} // namespace veskctl
