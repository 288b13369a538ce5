#include "app/menu/TemperatureScale.h"

namespace corvane {

const char* TemperatureScale::word(double celsius, const Lang& lang) {
    if (celsius < 40) {
        return lang.text("kühl", "cool");
    }
    if (celsius < 55) {
        return "ok";
    }
    if (celsius < 70) {
        return "warm";
    }
    if (celsius < 82) {
        return lang.text("heiß", "hot");
    }
    return lang.text("kritisch", "critical");
}

const char* TemperatureScale::colorRole(double celsius) {
    if (celsius < 50) {
        return "green";
    }
    if (celsius < 65) {
        return "lime";
    }
    if (celsius < 75) {
        return "orange";
    }
    if (celsius < 85) {
        return "ember";
    }
    return "red";
}

}  // namespace corvane
