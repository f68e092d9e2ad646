// Writes Event elements as the seed corpus of the event type XML fuzz target. Each seed
// starts with the byte that selects the mode: 0 for a whole document, 1 for the content
// of an Event element.

#include "seedwriter.h"

namespace {

QByteArray seed(char mode, const char *text)
{
    return QByteArray(1, mode) + QByteArray(text);
}

} // namespace

int main(int argc, char **argv)
{
    SeedWriter seeds(argc, argv);

    seeds.add(QStringLiteral("catalogue"),
              seed(0, "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                      "<Events>\n"
                      "  <Event id=\"1\" name=\"Pump\">\n"
                      "    <translation lang=\"ru\">Nasos</translation>\n"
                      "    <translation attribute=\"name\" lang=\"de\">Pum<!-- c -->pe</translation>\n"
                      "    <Message id=\"0\" name=\"Started\" df=\"Zapusk\"/>\n"
                      "    <Message id=\"300\" df=\"Ostanov\">\n"
                      "      <translation attribute=\"df\" lang=\"de\">Halt</translation>\n"
                      "      <translation attribute=\"unit\" lang=\"fr\">x</translation>\n"
                      "    </Message>\n"
                      "  </Event>\n"
                      "  <Event id=\"70000\" name=\"Valve\"><group><Message id=\"1\" name=\"Open\"/></group></Event>\n"
                      "</Events>\n"));
    seeds.add(QStringLiteral("missing-lang"),
              seed(0, "<Event id=\"2\" name=\"x\"><translation>t</translation></Event>"));
    seeds.add(QStringLiteral("not-closed"),
              seed(0, "<Event id=\"3\" name=\"x\"><translation lang=\"ru\">a<b>c</b></translation></Event>"));
    seeds.add(QStringLiteral("no-text"),
              seed(0, "<Event id=\"4\" name=\"x\"><translation lang=\"ru\"/></Event>"));
    seeds.add(QStringLiteral("wrong-attribute"),
              seed(0, "<Event id=\"5\"><translation attribute=\"df\" lang=\"ru\">t</translation><Message id=\"1\"/></Event>"));
    seeds.add(QStringLiteral("broken"), seed(0, "<Event id=\"6\"><Message id=\"1\" name=\"m\"><translation lang=\"ru\">t"));
    seeds.add(QStringLiteral("nested-events"),
              seed(0, "<r><Event id=\"1\"><Event id=\"2\"/><Message id=\"2\"/></Event><Event/></r>"));
    seeds.add(QStringLiteral("content-messages"),
              seed(1, "<Message id=\"1\" name=\"On\" df=\"Vkl\"><translation lang=\"de\">An</translation></Message>"
                      "<Message id=\"-1\"/>"));
    seeds.add(QStringLiteral("content-translation"), seed(1, "<translation lang=\"fr\">Pompe &amp; <![CDATA[x]]></translation>"));
    seeds.add(QStringLiteral("content-empty"), seed(1, ""));
    return seeds.finish();
}
