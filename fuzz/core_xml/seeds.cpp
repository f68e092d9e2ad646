// Writes core files as the seed corpus of the core map XML fuzz target.

#include "seedwriter.h"

int main(int argc, char **argv)
{
    SeedWriter seeds(argc, argv);

    QByteArray core = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Core>\n";
    for (int id = 1; id <= 12; ++id)
        core += "  <FA id=\"" + QByteArray::number(id) + "\" x=\"" + QByteArray::number(id % 4) + "\" y=\""
                + QByteArray::number(id / 4) + "\"/>\n";
    core += "</Core>\n";
    seeds.add(QStringLiteral("core"), core);
    seeds.add(QStringLiteral("only-core"), "<Core/>");
    seeds.add(QStringLiteral("repeated"),
              "<Core><FA id=\"4\" x=\"1\" y=\"1\"/><FA id=\"4\" x=\"7\" y=\"8\"/><FA id=\"9\" x=\"1\" y=\"1\"/></Core>");
    seeds.add(QStringLiteral("invalid-tag"), "<Core><FA id=\"1\" x=\"2\" y=\"3\"/><Fuel id=\"2\"/></Core>");
    seeds.add(QStringLiteral("broken-off"), "<Core><FA id=\"1\" x=\"2\" y=\"3\"/><FA id=\"2\" x=");
    seeds.add(QStringLiteral("no-attributes"), "<Core><FA/><FA id=\"-2147483648\" x=\"seven\" y=\"99999999999\"/></Core>");
    seeds.add(QStringLiteral("nested"),
              "<!-- unit 1 --><Core name=\"u\"><FA id=\"1\" x=\"1\" y=\"2\"><Core><FA id=\"2\" x=\"3\" y=\"4\"/></Core></FA>"
              "<?pi x?><![CDATA[<Other/>]]>text</Core>");
    seeds.add(QStringLiteral("entities"),
              "<!DOCTYPE Core [<!ENTITY a \"1\"><!ENTITY b \"&a;&a;\">]><Core><FA id=\"&b;\" x=\"&a;\" y=\"2\"/></Core>");
    seeds.add(QStringLiteral("namespaced"), "<Core xmlns:c=\"urn:core\"><c:FA id=\"1\" x=\"1\" y=\"1\"/></Core>");
    return seeds.finish();
}
