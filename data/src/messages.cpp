#include "ranvel/data/messages.h"

#include <map>

namespace ranvel {

std::string Msg(int n)
{
    static const std::map<int, std::string> texts = {
        {1, "Please Select a Language"},
        {2, "Item Not Found"},
        {3, "File not found"},
        {4, "Error Loading File"},
        {5, "The Date You Have Entered is Invalid. Please enter a Valid Date after 1900 AD."},
        {6, "The Time You Have Entered is Invalid. Please Enter a Valid Time."},
        {7, "The Latitude You Have Entered is Invalid. Please Enter Valid Latitude"},
        {8, "The Longitude You Have Entered is Invalid. Please Enter Valid Longitude"},
        {9, "The GMT You Have Entered is Invalid, Please Enter Valid GMT"},
        {10, "The Lattitude You Have Entered is Invalid, Please Enter A Valid Lattitude"},
        {11, "The Longitude You Have Entered is Invalid, Please Enter Valid Longitude"},
        {12, "Printer Performed an Invalid Operation. Please Check if Printer is Connected or Has Enough Paper."},
        {13, "Your Screen resolution is low. For best display select a resolution of 800x600 pixels or higher."},
        {14, "Low Resolution"},
        {101, "Enter the name of the person to generate the horoscope for."},
        {102, "If the person is a male, make sure this button is selected."},
        {103, "If the person is a female, make sure this button is selected."},
        {104, "Enter the date of birth in Day/Month/Year format, ex. if 2nd September 2000, enter 02/09/2000"},
        {105, "Click this button to save the person to database."},
        {106, "Click this button to delete the person from database."},
        {107, "Enter the time of birth of the person. You can enter time in both 12 hr and 24 hr format, i.e. 01.30PM is "
              "same as 13.30PM"},
        {108, "If the person was born between 12 in night (morning-afternoon) to 12 in noon, click this button."},
        {109, "If the person was born between 12 in noon to 12 in night (afternoon-night), click this button."},
        {110, "Select the country the person was born in from this list."},
        {111, "Enter the Country's time difference from GMT (Greenwich Mean Time)."},
        {112, "Select the City the person was born in from this list."},
        {113, "Enter the Latitude of the city in this box. If you selected a city from the list, it will appear "
              "automatically."},
        {114, "Enter the Longitude of the city in this box. If you selected a city from the list, it will appear "
              "automatically."},
        {115, "Select the language to display the details in."},
        {116, "Change Software Settings like Kundli Style, Ayanamsh, Personal details and manage City/Country "
              "database."},
        {117, "The person's details have been saved."},
        {118, "The person has been deleted from the database."},
        {119, "The person can't be more than 100 years old for Varshaphala. Please enter a more recent date."},
        {120, "The data has been saved in 'C:\\My Kundlis'"},
        {121, "Save city details to database."},
        {122, "Save kundli details to file."},
        {123, "Get kundli details from file."},
        {124, "Export Person Database to file."},
        {125, "Import Person Database from file."},
        {126, "Erro Printing!"},
    };
    auto it = texts.find(n);
    return it == texts.end() ? std::string() : it->second;
}

}  // namespace ranvel
