// An outside host: knows the installed package only, neither this source tree nor its build.
#include "nodes/values/SignalValue.h"
#include "widgets/WidgetsExport.h"

#include <QApplication>
#include <QLabel>

#include <iostream>

int main(int argc, char **argv)
{
    QApplication app(argc, argv);

    Nodes::SignalValue temperature(21.5);
    temperature.SetQuality(Nodes::Quality::Uncertain);

    QLabel label(QString::fromStdString(temperature.ToString()));
    label.show();

    const bool uncertain = temperature.GetQuality() == Nodes::Quality::Uncertain;
    std::cout << "host: " << label.text().toStdString() << (uncertain ? " uncertain" : " good")
              << std::endl;
    return 0;
}
