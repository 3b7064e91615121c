// docs/examples/util.cpp - examples of calendar, clock and sorting
#include "print.h"

using manual::print;
using manual::title;
using std::vector;

namespace {

void calendar()
{
    title("NDAYS, NDYIN");
    // example NDAYS, NDYIN
    const int32_t launch = orvel::ndays(4, 10, 1957).value(), landing = orvel::ndays(20, 7, 1969).value();
    print("days between", landing - launch);
    const auto [iday, month, iyear] = orvel::ndyin(landing + 1000).value();
    print("a thousand days later", iday, month, iyear);
    // end

    title("IDYWK");
    // example IDYWK
    print("20 July 1969, 1 is Sunday", orvel::idywk(20, 7, 1969).value());
    // end

    title("C1DAT");
    // example C1DAT
    print("2000 is a leap year, 1900 none", orvel::c1dat(1, 1, 2000).value().leap,
          orvel::c1dat(1, 1, 1900).value().leap);
    print("31 April, code", orvel::c1dat(31, 4, 2000).code());
    // end

    title("TDATE, TIMDY, CPSEC");
    // example TDATE, TIMDY, CPSEC
    const auto today = orvel::tdate().value();
    const auto now = orvel::timdy().value();
    print("a date of this century", orvel::ndays(today.iday, today.month, today.iyear).value() > 36523);
    print("a time", now.ihour < 24 && now.minute < 60 && now.isec <= 60);
    print("seconds used", orvel::cpsec().value() >= 0);
    // end
}

void sorting()
{
    title("SVRGN, SVRBN, SVIGN, SVIBN");
    // example SVRGN, SVRBN, SVIGN, SVIBN
    const vector<double> ra = {3, -5, 1};
    print("by value", orvel::svrgn(ra).value(), "by magnitude", orvel::svrbn(ra).value());
    const vector<int32_t> ia = {3, -5, 1};
    print("integers", orvel::svign(ia).value(), "by magnitude", orvel::svibn(ia).value());
    // end

    title("SVRGP, SVRBP, SVIGP, SVIBP");
    // example SVRGP, SVRBP, SVIGP, SVIBP
    vector<int32_t> iperm = {1, 2, 3};
    print("sorted", orvel::svrgp(ra, iperm).value(), "from places", iperm);
    vector<int32_t> labels = {101, 102, 103};
    print("by magnitude", orvel::svibp(ia, labels).value(), "with labels", labels);
    // end

    title("PERMU");
    // example PERMU
    print("another vector in that order", orvel::permu(vector<double>{30, -50, 10}, iperm).value());
    print("and back", orvel::permu(vector<double>{-50, 10, 30}, iperm, 2).value());
    // end

    title("PERMA");
    // example PERMA
    const orvel::matrix<double> a(3, 2, {1, 2, 3, 4, 5, 6});
    print("rows in that order", orvel::perma(a, iperm).value());
    print("columns exchanged", orvel::perma(a, vector<int32_t>{2, 1}, 2).value());
    // end
}

void helpers()
{
    title("C1IARG");
    // example C1IARG
    const auto checked = orvel::c1iarg(7, "KORDER", 1, 5, 3);
    print(std::string(checked.text()).c_str(), checked.code());
    // end

    title("C1TCI");
    // example C1TCI
    print("42", orvel::c1tci(" 42 ", 4).value().num, "4x", orvel::c1tci("4x", 2).value().ier);
    // end
}

}  // namespace

int main()
{
    calendar();
    sorting();
    helpers();
}
