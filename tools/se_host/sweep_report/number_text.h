// Numbers as people read them. The same in every locale.
#pragma once

#include <string>

#include "tools/se_host/measures/measures.h"

namespace se_host::report {

// As many decimals as the measure's unit is worth; "27.5".
std::string valueText(const Measure& measure, double value);
// A difference, with its sign and one more decimal: "+2.13".
std::string differenceText(const Measure& measure, double difference);
// With the unit: "+2.13 dB".
std::string withUnit(const Measure& measure, const std::string& number);
std::string percentText(double share);
// "< 0.001", "0.03", "1".
std::string probabilityText(double probability);

}  // namespace se_host::report
