#include "strings/string_table.h"

#include <cstdint>
#include <limits>
#include <new>

#include "base/errors.h"

namespace tavilo {

namespace {

struct Entry {
  std::string english;
  std::string german;
};

// Texts exactly as the program has always shown them, misspellings and
// doubled blanks included (German 73, 87, 34; the stray quote of 69).
// clang-format off
const Entry kStrings[kLastStringId + 1] = {
    {"-----ENGLISH-----",
     "-----DEUTSCH-----"},  // 0
    {"Tavilo",
     "Tavilo"},  // 1
    {"?",
     "?"},  // 2
    {"Ready.",
     "Bereit."},  // 3
    {"Alfa-Range",
     "Alfa-Bereich"},  // 4
    {"Cd-Range",
     "Cd-Bereich"},  // 5
    {"Cl-Range",
     "Cl-Bereich"},  // 6
    {"Airfoil",
     "Profil"},  // 7
    {"Structure and Print Selection",
     "Struktur und Druckauswahl"},  // 8
    {"&Drives:",
     "&Laufwerke:"},  // 9
    {"&Directories:",
     "&Verzeichnisse:"},  // 10
    {"&Files:",
     "&Dateien:"},  // 11
    {"&File",
     "&Datei"},  // 12
    {"&Import...",
     "&Import..."},  // 13
    {"&Export...",
     "&Export..."},  // 14
    {"&Print",
     "&Drucken"},  // 15
    {"Print &Options...",
     "Druck &einrichten..."},  // 16
    {"-",
     "-"},  // 17
    {"E&xit",
     "&Beenden"},  // 18
    {"&Tools",
     "&Werkzeuge"},  // 19
    {"Cd=min &Envelope",
     "Cd=min &Envelope"},  // 20
    {"&Approximate...",
     "&Approximieren..."},  // 21
    {"&Sort Re ascending per Set",
     "Re aufsteigend &sortieren"},  // 22
    {"Edit",
     "Bearbeiten"},  // 23
    {"Delete",
     "Löschen"},  // 24
    {"Copy",
     "Kopieren"},  // 25
    {"Paste",
     "Einfügen"},  // 26
    {"-",
     "-"},  // 27
    {"Name",
     "Name"},  // 28
    {"Edit",
     "Bearbeiten"},  // 29
    {"Delete",
     "Löschen"},  // 30
    {"Name",
     "Name"},  // 31
    {"Form1",
     "Form1"},  // 32
    {"OK",
     "OK"},  // 33
    {"Please select one airfoil and press the OK button.",
     "Bitte wählen Sie ein Profil  und dann die Schaltfläche OK."},  // 34
    {"This data file contains polars for more than one airfoil.",
     "Diese Datei enthält Polaren für mehr als ein Profil."},  // 35
    {"About Tavilo",
     "Über Tavilo"},  // 36
    {"OK",
     "OK"},  // 37
    {"Polar Approximation",
     "Angenäherte Polare"},  // 38
    {"&Copy",
     "&Kopieren"},  // 39
    {"&Show",
     "&Anzeigen"},  // 40
    {"Cd Tilt:",
     "Cw Drehung:"},  // 41
    {"Stall Cd at Cl Max:",
     "Stall Cw bei Ca Max:"},  // 42
    {"Stall Cd at Cl Max:",
     "Stall Cw bei Ca Max:"},  // 43
    {"Cd Shift:",
     "Cw Verschiebung:"},  // 44
    {"Cd Exponent:",
     "Cw Exponent:"},  // 45
    {"Cd Min:",
     "Cw Min:"},  // 46
    {"Stall Range Cl Min:",
     "Stall Bereich Ca Min:"},  // 47
    {"Stall Range Cl Max:",
     "Stall Bereich Ca Max:"},  // 48
    {"Cl Max:",
     "Ca Max:"},  // 49
    {"Cl Min:",
     "Ca Min:"},  // 50
    {"Alfa Zero:",
     "Alfa-Null:"},  // 51
    {"Options",
     "Optionen"},  // 52
    {"&Plot Options",
     "&Plot Optionen"},  // 53
    {"&Legend:",
     "&Legende:"},  // 54
    {"&lower right",
     "&rechts unten"},  // 55
    {"&upper left",
     "&links oben"},  // 56
    {"&Gridlines",
     "&Gitternetz"},  // 57
    {"OK",
     "OK"},  // 58
    {"&Language",
     "&Sprache"},  // 59
    {"Polar",
     "Polare"},  // 60
    {"Import to current airfoil",
     "In bestehende Struktur importieren"},  // 61
    {"Polar Exchange File (*.xml)|*.xml|Polar Exchange File (*.pef)|*.pef|Xfoil Polar File (*.pol)|*.pol|Mses Polar File (polar.*)|polar.*|UIUC Polar File (*.drg)|*.drg|Modellwindkanal File (*.mwk)|*.mwk|Eppler Output File (*.txt)|*.txt",
     "Polar Exchange Format (*.xml)|*.xml|Polar Exchange Format (*.pef)|*.pef|Xfoil Polarendatei (*.pol)|*.pol|Mses Polarendatei (polar.*)|polar.*|UIUC Polarendatei (*.drg)|*.drg|Modellwindkanaldatei (*.mwk)|*.mwk|Eppler Ausgabedatei (*.txt)|*.txt"},  // 62
    {"You can enter a new name for the airfoil in the text field below.",
     "Sie können im Textfeld unten einen neuen Namen für dieses Profil eingeben."},  // 63
    {"You can enter a new description for the selected configuration in the text field below.",
     "Sie können im Textfeld unten eine neue Beschreibung für die gewählte Konfiguration eingeben."},  // 64
    {"You can enter a new description for the selected polar in the text field below.",
     "Sie können im Textfeld unten eine neue Beschreibung für die gewählte Polare eingeben."},  // 65
    {"Change Airfoil Name",
     "Ändern des Profilnamens"},  // 66
    {"Change Polar Name",
     "Ändern der Polarenbezeichnung"},  // 67
    {"Change Set Description",
     "Ändern der Konfigurationsbezeichnung"},  // 68
    {"The Tavilo can...\"",
     "Der Tavilo kann...\""},  // 69
    {"...read, display and print",
     "...lesen, anzeigen und drucken:"},  // 70
    {"(You have to rename the files as they are recognized by extension)",
     "(Sie müssen Dateien eventuell umbenennen, da sie anhand ihrer Endung identifiziert werden)"},  // 71
    {"This is no valid XML file!",
     "Dies ist keine gültige XML Polarendatei !"},  // 72
    {"Unknown File Format!",
     "Umbekanntes Dateiformat!"},  // 73
    {"Reading...",
     "Lese..."},  // 74
    {"Error",
     "Fehler"},  // 75
    {"File contains no data sets!",
     "Datei enthält keine Datensätze!"},  // 76
    {"File contains no polars!",
     "Datei enthält keine Polaren!"},  // 77
    {"...export to:",
     "...exportieren nach:"},  // 78
    {"Graphs (from left to right):",
     "Grafiken (von links nach rechts):"},  // 79
    {"Oh No!  The following XML Element is out of sequence:",
     "Jo mei!  Das folgende XML Element tanzt aus der Reihe:"},  // 80
    {"Wanted to read DataPoint",
     "Fehler beim Einlesen von DataPoint"},  // 81
    {"Polar Exchange File (*.xml)|*.xml|Polar Exchange File (*.pef)|*.pef|Xfoil Polar File (*.pol)|*.pol|Mses Polar File (polar.*)|polar.*|Eppler Input File (*.epp)|*.epp",
     "Polaren-Austauschdatei (*.xml)|*.xml|Polaren-Austauschdatei (*.pef)|*.pef|Xfoil Polardatei (*.pol)|*.pol|Mses Polardatei (polar.*)|polar.*|Eppler Eingabedatei (*.epp)|*.epp"},  // 82
    {"Printing...",
     "Drucke..."},  // 83
    {"Deletes all polars.",
     "Löscht alle Polaren."},  // 84
    {"Adds new polar.",
     "Fügt Polare hinzu."},  // 85
    {"Exports all active polars.",
     "Exportiert alle aktiven Polaren."},  // 86
    {"Prints all active polars.",
     "Druckt all aktiven Polaren."},  // 87
    {"&Cancel",
     "&Abbrechen"},  // 88
    {"Reynolds number:",
     "Reynoldszahl:"},  // 89
    {"Mach number",
     "Machzahl:"},  // 90
    {"sort on Reynolds number",
     "nach &Reynoldszahl sortieren"},  // 91
    {"sort on &Mach number",
     "nach &Machzahl sortieren"},  // 92
};
// clang-format on

struct LaterEntry {
  int id;
  Entry text;
};

// Texts the program gained after the first 93, in blocks by feature so that
// work on one feature does not take another's ids: 100-119 the window's
// messages and the core's error texts, 120-129 the converter, 130-149
// printing, 150-169 the approximation, 170-189 table files, 190-209 graph
// interaction, 210-239 undo and the points table, 240-249 the converter's
// renderer and parallel batch, 250-279 the edges a user meets (files
// without polars, the XML limit, file errors, the points table's limit),
// 280-299 the approximation's bounds, refusals, held values and range.
// "%1", "%2" ... stand for the arguments of FormatResString.
// clang-format off
const LaterEntry kLaterStrings[] = {
    {100, {"&Batch PEF to XML...", "&Stapelumwandlung PEF nach XML..."}},
    {103, {"Eppler input files (.epp) cannot be written yet.",
           "Eppler-Eingabedateien (.epp) können noch nicht geschrieben werden."}},
    {104, {"File not found: %1", "Datei nicht gefunden: %1"}},
    {105, {"Subscript out of range: %1", "Index außerhalb des gültigen Bereichs: %1"}},
    {106, {"Overflow: %1", "Überlauf: %1"}},
    {107, {"Division by zero: %1", "Division durch Null: %1"}},
    {108, {"Out of memory: the file is too large to be held.",
           "Nicht genug Speicher: Die Datei ist zu groß, um sie zu halten."}},
    {109, {"File access error: %1", "Fehler beim Dateizugriff: %1"}},
    {110, {"Unexpected error: %1", "Unerwarteter Fehler: %1"}},
    {111, {"The envelope needs polars that span a range of lift: all their points have one Cl.",
           "Die Einhüllende braucht Polaren über einen Auftriebsbereich: Alle Punkte haben dasselbe Ca."}},
    {113, {"%1, line %2", "%1, Zeile %2"}},
    {114, {"File: %1\r\n%2", "Datei: %1\r\n%2"}},
    {115, {"All polar files", "Alle Polarendateien"}},
    {116, {"Envelope written to %1", "Einhüllende geschrieben nach %1"}},
    {117, {"%1 of %2 files could not be converted:", "%1 von %2 Dateien konnten nicht umgewandelt werden:"}},
    {118, {"Resource not found: %1", "Text nicht gefunden: %1"}},
    {120, {"%2 holds fewer polars or points than its counts announce; what it holds was read.",
           "%2 enthält weniger Polaren oder Punkte, als die Anzahlen darin ankündigen; gelesen wurde, was "
           "vorhanden ist."}},
    {121, {"Warning", "Warnung"}},
    {122, {"--airfoil %3 is past the end: %1 holds %2 airfoil(s).",
           "--airfoil %3 liegt hinter dem Ende: %1 enthält %2 Profil(e)."}},
    {123, {"--airfoil is ignored: %1 holds a single airfoil.",
           "--airfoil wird nicht beachtet: %1 enthält nur ein Profil."}},
    {124, {"--airfoil is ignored: %1 is not a drag polar file (.drg).",
           "--airfoil wird nicht beachtet: %1 ist keine Widerstandspolaren-Datei (.drg)."}},
    {130, {"Set", "Konfiguration"}},
    {131, {"Polar", "Polare"}},
    {132, {"Reynolds", "Reynolds"}},
    {133, {"Mach", "Mach"}},
    {134, {"Points", "Punkte"}},
    {135, {"+ %1 more", "+ %1 weitere"}},
    {136, {"No polar is active.", "Keine Polare ist aktiv."}},
    {137, {"Print Pre&view...", "Druck&vorschau..."}},
    {138, {"The page could not be printed: %1", "Die Seite konnte nicht gedruckt werden: %1"}},
    {150, {"Stall Cd at Cl Min", "Stall Cw bei Ca Min"}},
    {151, {"&Fit to polar", "An &Polare anpassen"}},
    {152, {"%1: \"%2\" is no number. Write the decimals after a period.",
           "%1: „%2“ ist keine Zahl. Bitte die Dezimalstellen nach einem Punkt schreiben."}},
    {155, {"%1 must lie between Cl Min and Cl Max.", "%1 muss zwischen Ca Min und Ca Max liegen."}},
    {161, {"Not shown by the polar, estimated from the rest: %1.",
           "Aus der Polare nicht ersichtlich, aus dem Übrigen geschätzt: %1."}},
    {165, {"Copied to the clipboard.", "In die Zwischenablage kopiert."}},
    {166, {"%1 must be a finite number.", "%1 muss eine endliche Zahl sein."}},
    {167, {"Fills the fields from the polar selected in the structure tree.",
           "Füllt die Felder aus der in der Struktur gewählten Polare."}},
    {168, {"Drawn into the graphs until they are drawn anew.",
           "In die Grafiken gezeichnet, bis sie neu gezeichnet werden."}},
    {170, {"A polar passed 32767 points; the rest follows as a new polar with the same Reynolds and Mach numbers.",
           "Eine Polare hat mehr als 32767 Punkte; der Rest folgt als neue Polare mit denselben Reynolds- und Machzahlen."}},
    {171, {"Polar Exchange File (*.xml)|*.xml|Polar Exchange File (*.pef)|*.pef|Xfoil Polar File (*.pol)|*.pol|Mses Polar File (polar.*)|polar.*|Eppler Input File (*.epp)|*.epp|Polar Table (*.csv)|*.csv",
           "Polaren-Austauschdatei (*.xml)|*.xml|Polaren-Austauschdatei (*.pef)|*.pef|Xfoil Polardatei (*.pol)|*.pol|Mses Polardatei (polar.*)|polar.*|Eppler Eingabedatei (*.epp)|*.epp|Polarentabelle (*.csv)|*.csv"}},
    {172, {"   .XML\tPolar Exchange Format", "   .XML\tPolaren-Austauschformat"}},
    {173, {"   .PEF\tolder Polar Exchange Format", "   .PEF\tälteres Polaren-Austauschformat"}},
    {174, {"   .POL\tXfoil polar file; MSES polar files (polar.*) as well",
           "   .POL\tXfoil-Polardatei; MSES-Polardateien (polar.*) ebenso"}},
    {175, {"   .DRG\tPrinceton and UIUC drag polar file", "   .DRG\tWiderstandspolaren aus Princeton und von der UIUC"}},
    {176, {"   .TXT, .MWK, .CSV\tpolar table in columns; Xfoil and drag files saved as .TXT as well",
           "   .TXT, .MWK, .CSV\tPolarentabelle in Spalten; als .TXT gespeicherte Xfoil- und Widerstandsdateien ebenso"}},
    {177, {"   .POL\tXfoil 5.4 polar file", "   .POL\tXfoil-5.4-Polardatei"}},
    {178, {"   .CSV\tpolar table that Tavilo reads back", "   .CSV\tPolarentabelle, die Tavilo wieder liest"}},
    {190, {"&View", "&Ansicht"}},
    {191, {"Axis &Numbers", "&Zahlen an allen Achsen"}},
    {192, {"&Readable Colours", "&Lesbare Farben"}},
    {193, {"Save &Graphs As...", "&Grafiken speichern unter..."}},
    {194, {"&Copy Picture", "Bild &kopieren"}},
    {195, {"&Save Picture...", "Bild &speichern..."}},
    {196, {"Reset &Zoom", "&Zoom zurücksetzen"}},
    {197, {"PNG Picture (*.png)|*.png|SVG Drawing (*.svg)|*.svg|PDF Document (*.pdf)|*.pdf",
           "PNG-Bild (*.png)|*.png|SVG-Zeichnung (*.svg)|*.svg|PDF-Dokument (*.pdf)|*.pdf"}},
    {198, {"The picture could not be written: %1", "Das Bild konnte nicht geschrieben werden: %1"}},
    {210, {"&Edit", "&Bearbeiten"}},
    {211, {"&Undo", "&Rückgängig"}},
    {212, {"&Redo", "&Wiederherstellen"}},
    {213, {"&Undo %1", "&Rückgängig: %1"}},
    {214, {"&Redo %1", "&Wiederherstellen: %1"}},
    {215, {"Open %1", "%1 öffnen"}},
    {216, {"New", "Neu"}},
    {217, {"Import %1", "%1 importieren"}},
    {218, {"Paste Polar", "Polare einfügen"}},
    {219, {"Delete %1", "%1 löschen"}},
    {220, {"Rename %1", "%1 umbenennen"}},
    {221, {"Properties of %1", "Eigenschaften von %1"}},
    {222, {"Sort on Reynolds Number", "Nach Reynoldszahl sortieren"}},
    {223, {"Sort on Mach Number", "Nach Machzahl sortieren"}},
    {224, {"Cd=min Envelope", "Cd=min Einhüllende"}},
    {225, {"Edit a Point of %1", "Punkt von %1 ändern"}},
    {226, {"Add a Point to %1", "Punkt zu %1 hinzufügen"}},
    {227, {"Delete Points of %1", "Punkte von %1 löschen"}},
    {228, {"Paste Points into %1", "Punkte in %1 einfügen"}},
    {229, {"%1 Files", "%1 Dateien"}},
    {230, {"&Points...", "&Punkte..."}},
    {231, {"Points of %1 (%2)", "Punkte von %1 (%2)"}},
    {232, {"'%1' is not a number. Enter numbers with a period as the decimal separator, as in 0.25.",
           "'%1' ist keine Zahl. Bitte Zahlen mit einem Punkt als Dezimaltrennzeichen eingeben, etwa 0.25."}},
    {233, {"%1 needs a value above -99.999: only Cm, TU and TL may be left empty (unknown).",
           "%1 braucht einen Wert über -99.999: Nur Cm, TU und TL dürfen leer (unbekannt) bleiben."}},
    {234, {"The clipboard holds no rows of points: each needs Alfa, Cl and Cd, in this order, separated by tabs; "
           "a period or a comma may separate the decimals.",
           "Die Zwischenablage enthält keine Punktzeilen: Jede braucht Alfa, Cl und Cd in dieser Reihenfolge, durch "
           "Tabulatoren getrennt; Dezimaltrennzeichen darf ein Punkt oder ein Komma sein."}},
    {235, {"Line %1 of the clipboard: %2", "Zeile %1 der Zwischenablage: %2"}},
    {236, {"&Recent Files", "&Zuletzt geöffnet"}},
    {237, {"%1 no longer exists and has been removed from the recent files.",
           "%1 existiert nicht mehr und wurde aus der Liste der zuletzt geöffneten Dateien entfernt."}},
    {238, {"&Add Row", "Zeile &hinzufügen"}},
    {239, {"&Delete Rows", "Zeilen &löschen"}},
    {240, {"The graph renderer %1 cannot be started: %2", "Das Grafikprogramm %1 kann nicht gestartet werden: %2"}},
    {250, {"%2 is a folder, not a polar file.", "%2 ist ein Ordner, keine Polarendatei."}},
    {251, {"1 of %2 files could not be converted:", "1 von %2 Dateien konnte nicht umgewandelt werden:"}},
    {252, {"1 file could not be converted:", "1 Datei konnte nicht umgewandelt werden:"}},
    {254, {"%2 holds more than 1000 sets; only the first 1000 were read.",
           "%2 enthält mehr als 1000 Konfigurationen; nur die ersten 1000 wurden gelesen."}},
    {255, {"%2 holds a set of more than 1000 polars; only the first 1000 polars of each set were read.",
           "%2 enthält eine Konfiguration mit mehr als 1000 Polaren; von jeder Konfiguration wurden nur die ersten "
           "1000 Polaren gelesen."}},
    {256, {"%2 holds a polar of more than 1000 points; only the first 1000 points of each polar were read.",
           "%2 enthält eine Polare mit mehr als 1000 Punkten; von jeder Polare wurden nur die ersten 1000 Punkte "
           "gelesen."}},
    {257, {"%2 holds a polar of more than 1000 points: readers of the XML format leave out the points past the "
           "1000th.",
           "%2 enthält eine Polare mit mehr als 1000 Punkten: Leser des XML-Formats lassen die Punkte nach dem "
           "1000. aus."}},
    // 258-264: the file access errors of our own, with the system's reason as
    // it gives it, and the converter's --info listing.
    {258, {"File access error: cannot read %1: %2", "Fehler beim Dateizugriff: %1 kann nicht gelesen werden: %2"}},
    {259, {"File access error: cannot write %1: %2",
           "Fehler beim Dateizugriff: %1 kann nicht geschrieben werden: %2"}},
    {260, {"File access error: cannot replace %1: %2", "Fehler beim Dateizugriff: %1 kann nicht ersetzt werden: %2"}},
    {261, {"File access error: cannot create a temporary file for the clipboard: %1",
           "Fehler beim Dateizugriff: Für die Zwischenablage kann keine temporäre Datei angelegt werden: %1"}},
    {262, {"File access error: the PEF reader needs %1 as a regular file of less than 4 GB",
           "Fehler beim Dateizugriff: Der PEF-Leser braucht %1 als gewöhnliche Datei unter 4 GB"}},
    {263, {"Airfoils in the file (choose with --airfoil N):", "Profile in der Datei (Auswahl mit --airfoil N):"}},
    {264, {"Polar%1: Re=%2, Mach=%3, %4 points", "Polare%1: Re=%2, Mach=%3, %4 Punkte"}},
    {272, {"%1 must lie between -1000000 and 1000000, not %2.",
           "%1 muss zwischen -1000000 und 1000000 liegen, nicht bei %2."}},
    {273, {"'%1' is not a number. A period or a comma may separate the decimals, as in 0.25 or 0,25.",
           "'%1' ist keine Zahl. Dezimaltrennzeichen darf ein Punkt oder ein Komma sein, etwa 0.25 oder 0,25."}},
    // 280-299: the approximation's bounds, refusals, held values and range.
    {280, {"%1 must lie between %2 and %3.", "%1 muss zwischen %2 und %3 liegen."}},
    {281, {"The polar at Re=%1, Mach=%2 cannot carry a fit: it needs at least 8 points of angle, lift and drag "
           "over at least 6 degrees.",
           "Die Polare bei Re=%1, Mach=%2 trägt keine Anpassung: Sie braucht mindestens 8 Punkte aus Winkel, "
           "Auftrieb und Widerstand über mindestens 6 Grad."}},
    {282, {"Polar %1 (Re=%2, Mach=%3) has fewer than 8 points or spans less than 6 degrees and is skipped.",
           "Polare %1 (Re=%2, Mach=%3) hat weniger als 8 Punkte oder überspannt weniger als 6 Grad und wird "
           "übersprungen."}},
    {283, {"No polar has the 8 points over 6 degrees a fit needs.",
           "Keine Polare hat die 8 Punkte über 6 Grad, die eine Anpassung braucht."}},
    {284, {"Fitted %1 of 11 values to %2 points: rms Cl %3, rms Cd %4.",
           "%1 von 11 Werten an %2 Punkte angepasst: rms Ca %3, rms Cw %4."}},
    {285, {"Fit between angles", "Anpassen zwischen Winkeln"}},
    {286, {"and", "und"}},
    {287, {"Hold: the fit keeps this value.", "Halten: Die Anpassung behält diesen Wert."}},
    {288, {"The angle range from %1 to %2 is empty.", "Der Winkelbereich von %1 bis %2 ist leer."}},
    // 320-369: the coordinate reader and the XFOIL run.
    {320, {"'%1' is not a pair of numbers x y.", "'%1' ist kein Zahlenpaar x y."}},
    {321, {"The point counts %1 do not match the points that follow.", "Die Punktzahlen %1 passen nicht zu den folgenden Punkten."}},
    {322, {"%2 holds %1 points; an airfoil outline needs at least 20.", "%2 enthält %1 Punkte; eine Profilkontur braucht mindestens 20."}},
    {323, {"%2 is no outline that runs from the trailing edge round the leading edge and back to it.", "%2 ist keine Kontur, die von der Hinterkante um die Nase zurück zur Hinterkante läuft."}},
    {324, {"The program %1 was not found. Install it with: apt-get install xfoil xvfb xfonts-base", "Das Programm %1 wurde nicht gefunden. Installieren mit: apt-get install xfoil xvfb xfonts-base"}},
    {325, {"The virtual display for XFOIL could not be started (%1). Install it with: apt-get install xvfb xfonts-base", "Die virtuelle Anzeige für XFOIL konnte nicht gestartet werden (%1). Installieren mit: apt-get install xvfb xfonts-base"}},
    {326, {"Re=%1: XFOIL took longer than %2 s and was stopped; its converged points are kept.", "Re=%1: XFOIL brauchte länger als %2 s und wurde beendet; seine konvergierten Punkte bleiben erhalten."}},
    {327, {"Re=%1: XFOIL ended abnormally; its converged points are kept.", "Re=%1: XFOIL endete unerwartet; seine konvergierten Punkte bleiben erhalten."}},
    {328, {"Re=%1: no angle converged.", "Re=%1: kein Winkel konvergierte."}},
    {329, {"Re=%1: no convergence at %2", "Re=%1: keine Konvergenz bei %2"}},
    {330, {"The XFOIL run was cancelled.", "Die XFOIL-Rechnung wurde abgebrochen."}},
    {331, {"Run &XFOIL...", "&XFOIL rechnen..."}},
    {332, {"Run XFOIL", "XFOIL rechnen"}},
    {333, {"Airfoil (NACA designation or coordinate file):", "Profil (NACA-Bezeichnung oder Koordinatendatei):"}},
    {334, {"File...", "Datei..."}},
    {335, {"Reynolds numbers:", "Reynoldszahlen:"}},
    {336, {"Polar type:", "Polarentyp:"}},
    {337, {"Re fixed", "Re fest"}},
    {338, {"Re·√Cl fixed", "Re·√Ca fest"}},
    {339, {"Mach:", "Mach:"}},
    {340, {"Ncrit:", "Ncrit:"}},
    {341, {"Transition trip top, bottom (x/c):", "Umschlagstreifen oben, unten (x/c):"}},
    {342, {"Angle from, to, step (°):", "Winkel von, bis, Schritt (°):"}},
    {343, {"Iterations:", "Iterationen:"}},
    {344, {"Repanel (PANE)", "Neu panelieren (PANE)"}},
    {345, {"Time limit per Reynolds number (s):", "Zeitgrenze je Reynoldszahl (s):"}},
    {346, {"XFOIL program:", "XFOIL-Programm:"}},
    {347, {"&Run", "&Rechnen"}},
    {348, {"Thickness %1 % at %2 % chord, camber %3 % at %4 % chord", "Dicke %1 % bei %2 % Tiefe, Wölbung %3 % bei %4 % Tiefe"}},
    {349, {"%1 polars added, %2 converged points.", "%1 Polaren hinzugefügt, %2 konvergierte Punkte."}},
    {350, {"%1 '%2' is not a valid value.", "%1 '%2' ist kein gültiger Wert."}},
    {351, {"Running XFOIL...", "XFOIL rechnet..."}},
    {352, {"Give at least one Reynolds number.", "Bitte mindestens eine Reynoldszahl angeben."}},
    {353, {"'%1' is neither a NACA designation of 4 or 5 digits nor a coordinate file.", "'%1' ist weder eine NACA-Bezeichnung mit 4 oder 5 Ziffern noch eine Koordinatendatei."}},
    {354, {"The polar Re=%1, Mach=%2 of set %3 is in %4 and in %5.", "Die Polare Re=%1, Mach=%2 der Konfiguration %3 steht in %4 und in %5."}},
    {370, {"Usage: tavilo [options] [FILE...]\n"
           "\n"
           "Opens the first FILE that holds polars, as a double click in the file list does,\n"
           "and imports the other FILEs into it as one step.\n"
           "\n"
           "Options:\n"
           "  --help        show this text\n"
           "  --version     show the version\n"
           "  --            what follows is a FILE, even if it starts with \"-\"\n",
           "Aufruf: tavilo [Optionen] [DATEI...]\n"
           "\n"
           "Öffnet die erste DATEI mit Polaren wie ein Doppelklick in der Dateiliste\n"
           "und importiert die übrigen DATEIen in einem Schritt dazu.\n"
           "\n"
           "Optionen:\n"
           "  --help        diesen Text zeigen\n"
           "  --version     die Version zeigen\n"
           "  --            was folgt, ist eine DATEI, auch wenn sie mit \"-\" beginnt\n"}},
    {371, {"tavilo: unknown option %1 (tavilo --help lists the options)",
           "tavilo: unbekannte Option %1 (tavilo --help zeigt die Optionen)"}},
};
// clang-format on

const Entry* FindEntry(int n) {
  if (n >= 0 && n <= kLastStringId) return &kStrings[n];
  for (const LaterEntry& entry : kLaterStrings)
    if (entry.id == n) return &entry.text;
  return nullptr;
}

}  // namespace

const std::string& ResourceString(int key) {
  const Entry* entry = key >= 1000 ? FindEntry(key % 1000) : nullptr;
  if (entry != nullptr && key / 1000 == static_cast<int>(Language::English)) return entry->english;
  if (entry != nullptr && key / 1000 == static_cast<int>(Language::German)) return entry->german;
  throw ResourceError(std::to_string(key));
}

std::string FormatResString(Text id, Language language, std::initializer_list<std::string_view> arguments) {
  const std::string& pattern = GetResString(id, language);
  std::string text;
  for (size_t k = 0; k < pattern.size(); ++k) {
    const size_t index = k + 1 < pattern.size() ? static_cast<size_t>(pattern[k + 1] - '1') : arguments.size();
    if (pattern[k] == '%' && index < arguments.size()) {
      text.append(arguments.begin()[index]);
      ++k;
    } else {
      text.push_back(pattern[k]);
    }
  }
  return text;
}

const std::string& GetResString(Text id, Language language) {
  const int64_t key = static_cast<int64_t>(language) * 1000 + static_cast<int>(id);
  if (key > std::numeric_limits<int32_t>::max() || key < std::numeric_limits<int32_t>::min())
    throw OverflowError(std::to_string(key));
  return ResourceString(static_cast<int>(key));
}

Text MessageText(const RuntimeError& error) {
  switch (error.Kind()) {
    case ErrorKind::FileNotFound: return Text::FileNotFound;
    case ErrorKind::Subscript: return Text::SubscriptOutOfRange;
    case ErrorKind::Overflow: return Text::Overflow;
    case ErrorKind::DivisionByZero: return Text::DivisionByZero;
    case ErrorKind::Resource: return Text::ResourceNotFound;
    case ErrorKind::Named: return error.NamedText();
    case ErrorKind::Unexpected: break;
  }
  return Text::UnexpectedError;
}

std::string ErrorText(const std::exception& error, Language language, bool namingFile) {
  if (auto* runtime = dynamic_cast<const RuntimeError*>(&error)) {
    const std::vector<std::string>& arguments = runtime->Arguments();
    std::string text = FormatResString(MessageText(*runtime), language,
                                       {arguments[0], arguments.size() > 1 ? arguments[1] : std::string()});
    return runtime->File().empty() || !namingFile
               ? text
               : FormatResString(Text::FileAndMessage, language, {runtime->File(), text});
  }
  if (dynamic_cast<const std::bad_alloc*>(&error) != nullptr) return GetResString(Text::OutOfMemory, language);
  return FormatResString(Text::UnexpectedError, language, {error.what()});
}

std::string DialogTitle(std::string_view caption) {
  if (caption.ends_with("...")) caption.remove_suffix(3);
  std::string title;
  for (size_t k = 0; k < caption.size(); ++k) {
    if (caption[k] == '&' && ++k == caption.size()) break;
    title.push_back(caption[k]);
  }
  return title;
}

std::string ErrorTitle(Language language) {
  return GetResString(Text::ProgramName, language) + ": " + GetResString(Text::Error, language);
}

std::string WarningTitle(Language language) {
  return GetResString(Text::ProgramName, language) + ": " + GetResString(Text::Warning, language);
}

}  // namespace tavilo
