#include "tests/escl/EsclDocuments.h"

#include "tests/escl/EsclScanner.h"

namespace scanengine {
namespace {

/// Sizes are in 1/300 inch.
constexpr int a4Width = 2480;
constexpr int a4Height = 3508;
constexpr int legalHeight = 4200;

const QByteArray declaration = QByteArrayLiteral(R"(<?xml version="1.0" encoding="UTF-8"?>)");
const QByteArray namespaces =
    QByteArrayLiteral(R"( xmlns:scan="http://schemas.hp.com/imaging/escl/2011/05/03")"
                      R"( xmlns:pwg="http://www.pwg.org/schemas/2010/12/sm")");

QByteArray element(const QByteArray &name, const QByteArray &content)
{
    return '<' + name + '>' + content + "</" + name.split(' ').first() + '>';
}

QByteArray element(const QByteArray &name, int number)
{
    return element(name, QByteArray::number(number));
}

QByteArray resolutions()
{
    QByteArray all;
    for (const int dpi : {75, 150, 300, 600}) {
        all += element("scan:DiscreteResolution",
                       element("scan:XResolution", dpi) + element("scan:YResolution", dpi));
    }
    return element("scan:SupportedResolutions", element("scan:DiscreteResolutions", all));
}

QByteArray source(const QByteArray &name, int height)
{
    const QByteArray colors = element("scan:ColorModes", element("scan:ColorMode", "Grayscale8") +
                                                             element("scan:ColorMode", "RGB24"));
    const QByteArray formats =
        element("scan:DocumentFormats", element("pwg:DocumentFormat", "image/jpeg") +
                                            element("scan:DocumentFormatExt", "image/jpeg"));
    return element(name,
                   element("scan:MinWidth", 16) + element("scan:MaxWidth", a4Width) +
                       element("scan:MinHeight", 16) + element("scan:MaxHeight", height) +
                       element("scan:MaxScanRegions", 1) +
                       element("scan:SettingProfiles",
                               element("scan:SettingProfile", colors + formats + resolutions())));
}

} // namespace

QByteArray capabilitiesDocument(const EsclSetup &setup)
{
    QByteArray feeder = source("scan:AdfSimplexInputCaps", legalHeight);
    if (setup.hasDuplex)
        feeder += source("scan:AdfDuplexInputCaps", legalHeight);
    return declaration +
           element("scan:ScannerCapabilities" + namespaces,
                   element("pwg:Version", "2.63") + element("pwg:MakeAndModel", "Acme Page 100") +
                       element("pwg:SerialNumber", "ACME0001") +
                       element("scan:Platen", source("scan:PlatenInputCaps", a4Height)) +
                       (setup.hasFeeder ? element("scan:Adf", feeder) : QByteArray()));
}

QByteArray statusDocument(const QByteArray &state, const QByteArray &feederState)
{
    return declaration +
           element(
               "scan:ScannerStatus" + namespaces,
               element("pwg:Version", "2.63") + element("pwg:State", state) +
                   (feederState.isEmpty() ? QByteArray() : element("scan:AdfState", feederState)));
}

} // namespace scanengine
