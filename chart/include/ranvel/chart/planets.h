// clsPlanets: the chart of one moment and place. Its owner fills the record
// it exposes, calls Calculate, and reads positions and everything derived
// from them. This unit holds the record, the text store binding and the
// conversions of angle and date that stand beside the record.
#pragma once

#include <array>
#include <memory>
#include <string>

#include "ranvel/chart/person.h"
#include "ranvel/platform/database.h"
#include "ranvel/platform/datetime.h"
#include "ranvel/platform/variant.h"

namespace ranvel {

class clsPlanets {
public:
    clsPlanets();

    // The chart's record, made on first read; may be replaced by assignment.
    ranvel::clsPerson& clsPerson();
    void clsPerson(std::shared_ptr<ranvel::clsPerson> person);
    std::shared_ptr<ranvel::clsPerson> PersonRef();

    // Passes the value on to the record.
    void SetBirthDate(const DateTime& date);

    // --- text store ---
    // Keeps the text database; the person database goes to the record.
    void setTextDB(std::shared_ptr<Database> textDB, std::shared_ptr<Database> recosDB);
    std::shared_ptr<Database> GetTxtDB() const { return textDB_; }
    std::shared_ptr<Database> GetRecosDB() const { return recosDB_; }
    Variant GetTextBetween(std::string_view table, const Variant& head, std::string_view category);

    // --- conversions of angle and date ---
    static double DegToDec(int d, int m, int s);
    // "d:m:s" of a decimal value, the fraction read from the value's text.
    static std::string DecToDeg(double x);
    // A DD.MM value in decimal degrees.
    static double MinToDec(double x);
    // The sign's name of a longitude, from a table of the twelve names kept
    // on the object.
    std::string ConvertToDegNoVal(double lon);
    // "dd:mm:ss" within the sign.
    static std::string ConvertValNoDeg(double x);
    // Degrees and minutes within the sign, joined by the language's ":".
    std::string ConvertValNoDegNoSec(double x);
    static DateTime DateAddEx(std::string_view interval, double amount, const DateTime& date);
    // Moves a date by a value with a fraction, unit by unit (1 years, 3 days,
    // 4 hours, 5 minutes, 6 seconds); unit and value are changed in place.
    static DateTime AddDecValToDate(const DateTime& date, int& unit, double& value);
    std::string ConvertDateToText(const DateTime& date);
    static long ConvertDateToNum(const DateTime& date);
    std::string GetMonthNameByNum(int n);
    // Takes one off n in place and names that week day.
    std::string GetDayName(int& n);

private:
    std::shared_ptr<ranvel::clsPerson> person_;
    std::shared_ptr<Database> textDB_;
    std::shared_ptr<Database> recosDB_;
    std::array<std::string, 12> rashiNames_;
    bool rashiNamesFilled_ = false;
};

}  // namespace ranvel
