#include "player/Calibratura.h"

#include "platform/Numbers.h"
#include "settings/Impostazioni.h"
#include "settings/TestoNumero.h"
#include "ui/PuntatoreOccupato.h"
#include "ui/Titoli.h"

#include <array>
#include <cmath>
#include <string_view>

namespace sonnel {
namespace {

constexpr int PagineProva = 10;
constexpr int DecimiPerSecondo = 10;
constexpr std::int16_t RighePerPagina = 4;
constexpr float SenzaCompensazione = 1;  // seconds

constexpr std::string_view ConsiglioRisoluzione =
    "It's a good idea to run the video calibration when you change your video resolution.";

/// The verdict on a test that took up to so many whole seconds.
struct Fascia {
    float fino;
    Icon icona;
    bool beep;
    std::string_view giudizio;
    std::string_view seguito;
};

constexpr std::array<Fascia, 6> Fasce = {{
    {0, Icon::Information, false,
     "Good! System performances are perfect, there's plenty of CPU power to use, so no "
     "compensation is needed.",
     ConsiglioRisoluzione},
    {2, Icon::Information, false,
     "System performances are good, you can run Sonnel with just a little compensation!",
     ConsiglioRisoluzione},
    {4, Icon::Information, false,
     "System performances are almost good and you can run Sonnel, but some songs may not have a "
     "perfect synchronization.",
     ConsiglioRisoluzione},
    {8, Icon::Information, false,
     "System performances are a bit low to let Sonnel have a perfect synchronization: Sonnel will "
     "try to compensate the delays, but some songs will probably not show a good synchronization.",
     ConsiglioRisoluzione},
    {14, Icon::Critical, true,
     "WARNING! System performances are too low to let Sonnel show the words in synchrony with the "
     "music!",
     "You can increase the program speed by resizing the Window size, and/or reducing the screen "
     "colour depth.\r\n\r\n"
     "The program will however try to compensate the lack of speed, but this will not be enough."},
    {999, Icon::Critical, true,
     "WARNING! ATTENZIONE! System performances are very low, Sonnel will not be able to show the "
     "words in synchrony with the music!",
     "Possible reasons:\r\n"
     "- too many screen colors;\r\n"
     "- a slow VGA card or inadequate video device drivers;\r\n"
     "- a slow CPU"},
}};

constexpr std::string_view ProgrammaInutile =
    "Please correct the problem, or Sonnel won't run properly.\r\n\r\n"
    "With the current configuration the program won't be able to play Karaoke.";

std::string PaginaProva(int numero) {
    return "Test page\r\nnumber " + std::to_string(numero) + "\r\n*******\r\n***";
}

}  // namespace

std::int32_t CompensazioneDa(float secondi) {
    if (secondi <= SenzaCompensazione) {
        return 0;
    }
    const float decimiPerPagina = secondi / PagineProva * DecimiPerSecondo;
    return RoundHalfEven<std::int32_t>(std::floor(decimiPerPagina + 0.5F)) - 1;
}

std::string TestoSecondi(float secondi) {
    const auto decimi = RoundHalfEven<std::int64_t>(std::round(std::abs(secondi) * 10));
    std::string testo = secondi < 0 ? "-" : "";
    if (decimi >= 10) {
        testo += std::to_string(decimi / 10);
    }
    testo += '.';
    if (decimi % 10 != 0) {
        testo += std::to_string(decimi % 10);
    }
    return testo;
}

GiudizioCalibratura Giudica(float secondi) {
    GiudizioCalibratura esito;
    const float intero = std::floor(secondi);
    for (const Fascia& fascia : Fasce) {
        if (intero < 0 || intero > fascia.fino) {
            continue;
        }
        std::string testo = "Test duration: " + TestoSecondi(secondi) + " seconds.\r\n";
        testo.append(fascia.giudizio).append("\r\n\r\n").append(fascia.seguito);
        esito.beep = fascia.beep;
        esito.messaggi.push_back({testo, fascia.icona});
        if (&fascia == &Fasce.back()) {
            esito.messaggi.push_back({std::string(ProgrammaInutile), Icon::Critical});
        }
        break;
    }
    return esito;
}

bool Calibratura::EseguiCalibratura() {
    const bool misura = Chiedi();
    if (misura) {
        PuntatoreOccupato puntatore(p_.eventi, Pointer::Normal);
        const float secondi = Misura();
        p_.config.Compensazione = CompensazioneDa(secondi);
        SalvaImpostazione(p_.registro, "Opzioni", "Compensazione",
                          TestoNumero(p_.config.Compensazione));
        puntatore.Ripristina();
        Riferisci(secondi);
    }
    Disponi();
    return misura;
}

bool Calibratura::Chiedi() {
    return p_.msgBox.Show(
               {"Sonnel will now perform the video calibration test.\r\n\r\n"
                "The calibration helps the program to compensate the CPU and video speed to get "
                "the best possible performance on this system.\r\n\r\n"
                "Please close any application that may slow down your PC (e.g. DOS shells, "
                "schedule programs and any printing), and click on OK.",
                Icon::Exclamation, Buttons::OkCancel}) == Answer::Ok;
}

/// Seconds that drawing the test pages takes; negative across midnight.
float Calibratura::Misura() {
    FontSpec font = p_.parole.Font();
    font.name = p_.config.FontName;
    font.size = p_.config.FontSize;
    p_.parole.SetFont(font);
    Disponi();
    p_.risincronizza();
    p_.eventi.RunPending();
    const double inizio = p_.orologio.TimeOfDay();
    for (int numero = 1; numero <= PagineProva; ++numero) {
        p_.disegno.MostraPagina(PaginaProva(numero));
        p_.eventi.RunPending();
    }
    const auto secondi = static_cast<float>(p_.orologio.TimeOfDay() - inizio);
    p_.disegno.MostraPagina("");
    return secondi;
}

void Calibratura::Riferisci(float secondi) {
    const GiudizioCalibratura esito = Giudica(secondi);
    if (esito.beep) {
        p_.eventi.Beep();
    }
    for (const Message& messaggio : esito.messaggi) {
        p_.msgBox.Show(messaggio);
    }
}

void Calibratura::Disponi() {
    std::int16_t righe = RighePerPagina;
    p_.impaginazione.ResizeParole(righe);
}

}  // namespace sonnel
