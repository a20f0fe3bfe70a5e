<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>AboutText</name>
    <message>
        <source>Scanning engine powered by NAPS2.Sdk</source>
        <translation>Scan-Technik von NAPS2.Sdk</translation>
    </message>
    <message>
        <source>© Ben Olden-Cooligan and the NAPS2.Sdk contributors</source>
        <translation>© Ben Olden-Cooligan und die Mitwirkenden an NAPS2.Sdk</translation>
    </message>
    <message>
        <source>NAPS2.Sdk is licensed under the GNU LGPL 2.1 (or later);</source>
        <translation>NAPS2.Sdk steht unter der GNU LGPL 2.1 (oder neuer);</translation>
    </message>
    <message>
        <source>NAPS2.Wia is licensed under the MIT license.</source>
        <translation>NAPS2.Wia steht unter der MIT-Lizenz.</translation>
    </message>
    <message>
        <source>The engine runs as a separate process (scanengine.app).</source>
        <translation>Die Scan-Technik läuft als eigener Prozess (scanengine.app).</translation>
    </message>
    <message>
        <source>Source code: %1</source>
        <translation>Quelltext: %1</translation>
    </message>
    <message>
        <source>Scanning engine powered by SANE</source>
        <translation>Scan-Technik von SANE</translation>
    </message>
    <message>
        <source>SANE and sane-airscan are licensed under the GNU GPL 2 (or later) with an exception for their use by other programs;</source>
        <translation>SANE und sane-airscan stehen unter der GNU GPL 2 (oder neuer) mit einer Ausnahme für den Gebrauch durch andere Programme;</translation>
    </message>
    <message>
        <source>The engine runs as a separate process (scanengine).</source>
        <translation>Die Scan-Technik läuft als eigener Prozess (scanengine).</translation>
    </message>
    <message>
        <source>Velmor — the only scanner app you need.</source>
        <translation>Velmor – mehr Scanner-App braucht es nicht.</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>© the authors of SANE, sane-airscan, OpenCV, libpng and Qt</source>
        <translation>© die Autoren von SANE, sane-airscan, OpenCV, libpng und Qt</translation>
    </message>
    <message>
        <source>OpenCV is licensed under the Apache License 2.0, libpng under its own, Qt under the GNU LGPL 3.</source>
        <translation>OpenCV steht unter der Apache-Lizenz 2.0, libpng unter einer eigenen, Qt unter der GNU LGPL 3.</translation>
    </message>
</context>
<context>
    <name>AboutWindow</name>
    <message>
        <source>About VELMOR</source>
        <translation>Über VELMOR</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>ActionRow</name>
    <message>
        <source>Auto</source>
        <translation>Auto</translation>
    </message>
    <message>
        <source>Tune brightness and contrast by the sample</source>
        <translation>Helligkeit und Kontrast nach der Probe einstellen</translation>
    </message>
    <message>
        <source>Preset name</source>
        <translation>Name der Vorlage</translation>
    </message>
    <message>
        <source>Save preset</source>
        <translation>Vorlage sichern</translation>
    </message>
</context>
<context>
    <name>AdvancedPanelView</name>
    <message>
        <source>Scan</source>
        <translation>Scannen</translation>
    </message>
    <message>
        <source>Quality</source>
        <translation>Qualität</translation>
    </message>
    <message>
        <source>Colour</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <source>Batch</source>
        <translation>Stapel</translation>
    </message>
    <message>
        <source>Wait for paper and keep scanning until Stop</source>
        <translation>Auf Papier warten und bis zum Stopp weiterscannen</translation>
    </message>
    <message>
        <source>Enhance</source>
        <translation>Verbessern</translation>
    </message>
    <message>
        <source>Output</source>
        <translation>Ausgabe</translation>
    </message>
    <message>
        <source>Searchable text</source>
        <translation>Durchsuchbarer Text</translation>
    </message>
    <message>
        <source>Recognize text so the PDF is searchable</source>
        <translation>Text erkennen, damit die PDF durchsuchbar ist</translation>
    </message>
    <message>
        <source>Save to</source>
        <translation>Sichern in</translation>
    </message>
    <message>
        <source>Change…</source>
        <translation>Ändern …</translation>
    </message>
    <message>
        <source>Choose</source>
        <translation>Auswählen</translation>
    </message>
    <message>
        <source>Calibrate…</source>
        <translation>Kalibrieren …</translation>
    </message>
    <message>
        <source>Tune brightness and contrast on a sample page</source>
        <translation>Helligkeit und Kontrast an einer Probeseite einstellen</translation>
    </message>
</context>
<context>
    <name>Advice</name>
    <message>
        <source>This copy was installed as a Flatpak. To update it, run:

%1</source>
        <translation>Diese Kopie ist als Flatpak installiert. So wird sie aktualisiert:

%1</translation>
    </message>
    <message>
        <source>This copy is an AppImage:

%1

To update it, put a newer file in its place.</source>
        <translation>Diese Kopie ist ein AppImage:

%1

Zum Aktualisieren eine neuere Datei an ihre Stelle legen.</translation>
    </message>
    <message>
        <source>This copy was installed as the package %1. If that came from a package source, this updates it:

%2

If it came as a file, install a newer one in the same way.</source>
        <translation>Diese Kopie ist als Paket %1 installiert. Kam es aus einer Paketquelle, wird sie so aktualisiert:

%2

Kam es als Datei, ist eine neuere auf demselben Weg zu installieren.</translation>
    </message>
    <message>
        <source>This copy belongs to no package:

%1

To update it, build or copy the new version in the same way as this one.</source>
        <translation>Diese Kopie gehört zu keinem Paket:

%1

Zum Aktualisieren die neue Version auf demselben Weg bauen oder kopieren wie diese.</translation>
    </message>
</context>
<context>
    <name>BottomBar</name>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>My scans</source>
        <translation>Meine Scans</translation>
    </message>
    <message>
        <source>1 scan</source>
        <translation>1 Scan</translation>
    </message>
    <message numerus="yes">
        <source>%n scans</source>
        <translation>
            <numerusform>%n Scan</numerusform>
            <numerusform>%n Scans</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>BrowserToolBar</name>
    <message>
        <source>Rotate</source>
        <translation>Drehen</translation>
    </message>
    <message>
        <source>Crop</source>
        <translation>Zuschneiden</translation>
    </message>
    <message>
        <source>Magic</source>
        <translation>Zauber</translation>
    </message>
    <message>
        <source>Repeat</source>
        <translation>Wiederholen</translation>
    </message>
    <message>
        <source>Apply saved magic to selection</source>
        <translation>Gespeicherten Zauber auf die Auswahl anwenden</translation>
    </message>
    <message>
        <source>Merge</source>
        <translation>Zusammenfügen</translation>
    </message>
    <message>
        <source>Split</source>
        <translation>Teilen</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Rückgängig</translation>
    </message>
    <message>
        <source>Ctrl+Z</source>
        <translation>Strg+Z</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
</context>
<context>
    <name>CalibrationView</name>
    <message>
        <source>Calibrate</source>
        <translation>Kalibrieren</translation>
    </message>
    <message>
        <source>adjust until it&apos;s readable, then Save preset</source>
        <translation>einstellen, bis es lesbar ist, dann Vorlage sichern</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>Colour</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <source>Brightness</source>
        <translation>Helligkeit</translation>
    </message>
    <message>
        <source>Contrast</source>
        <translation>Kontrast</translation>
    </message>
    <message>
        <source>PRESETS</source>
        <translation>VORLAGEN</translation>
    </message>
</context>
<context>
    <name>CalibrationWindow</name>
    <message>
        <source>Calibrate</source>
        <translation>Kalibrieren</translation>
    </message>
</context>
<context>
    <name>DrawerWindow</name>
    <message>
        <source>My scans</source>
        <translation>Meine Scans</translation>
    </message>
</context>
<context>
    <name>EditorArea</name>
    <message>
        <source>Page %1</source>
        <translation>Seite %1</translation>
    </message>
    <message>
        <source>Use this outline</source>
        <translation>Diesen Umriss nehmen</translation>
    </message>
    <message>
        <source>Crop along the dashed line (Tab)</source>
        <translation>Entlang der gestrichelten Linie zuschneiden (Tab)</translation>
    </message>
</context>
<context>
    <name>EditorToolBar</name>
    <message>
        <source>Zoom out</source>
        <translation>Verkleinern</translation>
    </message>
    <message>
        <source>Zoom in (pinch or Alt-scroll)</source>
        <translation>Vergrößern (zwei Finger oder Alt und Mausrad)</translation>
    </message>
    <message>
        <source>Fit</source>
        <translation>Einpassen</translation>
    </message>
    <message>
        <source>Previous page</source>
        <translation>Vorige Seite</translation>
    </message>
    <message>
        <source>Next page</source>
        <translation>Nächste Seite</translation>
    </message>
    <message>
        <source>Undo box</source>
        <translation>Rahmen zurück</translation>
    </message>
    <message>
        <source>Remove the last corner/box (⌫ / Ctrl+Z)</source>
        <translation>Letzte Ecke oder letzten Rahmen entfernen (⌫ / Strg+Z)</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>Anwenden</translation>
    </message>
    <message>
        <source>Apply crop (⏎)</source>
        <translation>Zuschneiden (⏎)</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Close without applying (Esc)</source>
        <translation>Schließen, ohne anzuwenden (Esc)</translation>
    </message>
</context>
<context>
    <name>EnhanceSteps</name>
    <message>
        <source>Auto-enhance</source>
        <translation>Automatisch verbessern</translation>
    </message>
    <message>
        <source>Crop · straighten · levels · clean</source>
        <translation>Zuschnitt · Ausrichtung · Tonwerte · Säubern</translation>
    </message>
    <message>
        <source>Fine-tune the enhance steps</source>
        <translation>Schritte einzeln einstellen</translation>
    </message>
    <message>
        <source>Auto-crop</source>
        <translation>Zuschneiden</translation>
    </message>
    <message>
        <source>Straighten</source>
        <translation>Gerade richten</translation>
    </message>
    <message>
        <source>Clean up background</source>
        <translation>Hintergrund säubern</translation>
    </message>
    <message>
        <source>Remove blank pages</source>
        <translation>Leere Seiten entfernen</translation>
    </message>
    <message>
        <source>Auto brightness/contrast</source>
        <translation>Helligkeit/Kontrast automatisch</translation>
    </message>
</context>
<context>
    <name>FindBar</name>
    <message>
        <source>Find</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Find in document</source>
        <translation>Im Dokument suchen</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>Not found</source>
        <translation>Nicht gefunden</translation>
    </message>
    <message>
        <source>Previous match</source>
        <translation>Vorheriger Treffer</translation>
    </message>
    <message>
        <source>Next match</source>
        <translation>Nächster Treffer</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>GridFooter</name>
    <message>
        <source>Thumbnail size</source>
        <translation>Größe der Vorschaubilder</translation>
    </message>
    <message>
        <source>%1 scans</source>
        <translation>%1 Scans</translation>
    </message>
</context>
<context>
    <name>ImportTarget</name>
    <message>
        <source>Drop to import</source>
        <translation>Zum Importieren ablegen</translation>
    </message>
</context>
<context>
    <name>LevelsRangeSlider</name>
    <message>
        <source>Black point</source>
        <translation>Schwarzpunkt</translation>
    </message>
    <message>
        <source>White point</source>
        <translation>Weißpunkt</translation>
    </message>
</context>
<context>
    <name>MagicControls</name>
    <message>
        <source>Levels</source>
        <translation>Tonwerte</translation>
    </message>
    <message>
        <source>Softness</source>
        <translation>Weichheit</translation>
    </message>
    <message>
        <source>crisp</source>
        <translation>hart</translation>
    </message>
    <message>
        <source>soft</source>
        <translation>weich</translation>
    </message>
    <message>
        <source>Auto</source>
        <translation>Auto</translation>
    </message>
    <message>
        <source>Aggressive auto-adjust for best readability</source>
        <translation>Kräftig nach bester Lesbarkeit einstellen</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Zurücksetzen</translation>
    </message>
    <message>
        <source>Back to the unmodified page (Ctrl+Z)</source>
        <translation>Zurück zur unveränderten Seite (Strg+Z)</translation>
    </message>
    <message>
        <source>click to set · black then white</source>
        <translation>klicken · erst Schwarz, dann Weiß</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>Anwenden</translation>
    </message>
    <message>
        <source>Apply to this page (⏎)</source>
        <translation>Auf diese Seite anwenden (⏎)</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>About VELMOR</source>
        <translation>Über VELMOR</translation>
    </message>
    <message>
        <source>Check for Updates…</source>
        <translation>Nach Updates suchen …</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
</context>
<context>
    <name>Models</name>
    <message>
        <source>Document</source>
        <translation>Dokument</translation>
    </message>
    <message>
        <source>Photo</source>
        <translation>Foto</translation>
    </message>
    <message>
        <source>Auto</source>
        <translation>Auto</translation>
    </message>
    <message>
        <source>Color</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <source>Gray</source>
        <translation>Grau</translation>
    </message>
    <message>
        <source>B&amp;W</source>
        <translation>S/W</translation>
    </message>
    <message>
        <source>Low</source>
        <translation>Niedrig</translation>
    </message>
    <message>
        <source>Medium</source>
        <translation>Mittel</translation>
    </message>
    <message>
        <source>High</source>
        <translation>Hoch</translation>
    </message>
</context>
<context>
    <name>PDFKitView</name>
    <message>
        <source>Page %1 of %2</source>
        <translation>Seite %1 von %2</translation>
    </message>
</context>
<context>
    <name>PresetControl</name>
    <message>
        <source>Presets</source>
        <translation>Vorlagen</translation>
    </message>
</context>
<context>
    <name>PresetFooter</name>
    <message>
        <source>Save as preset…</source>
        <translation>Als Vorlage sichern …</translation>
    </message>
</context>
<context>
    <name>PresetMenu</name>
    <message>
        <source>Presets</source>
        <translation>Vorlagen</translation>
    </message>
</context>
<context>
    <name>PresetMenuRow</name>
    <message>
        <source>Delete preset</source>
        <translation>Vorlage löschen</translation>
    </message>
    <message>
        <source>Delete preset %1</source>
        <translation>Vorlage %1 löschen</translation>
    </message>
</context>
<context>
    <name>PresetPills</name>
    <message>
        <source>Presets</source>
        <translation>Vorlagen</translation>
    </message>
</context>
<context>
    <name>PresetSavePopover</name>
    <message>
        <source>Preset name</source>
        <translation>Name der Vorlage</translation>
    </message>
    <message>
        <source>Include save-to folder</source>
        <translation>Mit Zielordner</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Sichern</translation>
    </message>
</context>
<context>
    <name>ProgressRing</name>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
</context>
<context>
    <name>ReadyButton</name>
    <message>
        <source>Scan</source>
        <translation>Scannen</translation>
    </message>
</context>
<context>
    <name>RenamePopover</name>
    <message>
        <source>Name of the scan</source>
        <translation>Name des Scans</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>Umbenennen</translation>
    </message>
</context>
<context>
    <name>SampleArea</name>
    <message>
        <source>Original</source>
        <translation>Original</translation>
    </message>
    <message>
        <source>Scan again</source>
        <translation>Neu scannen</translation>
    </message>
    <message>
        <source>Result</source>
        <translation>Ergebnis</translation>
    </message>
</context>
<context>
    <name>SamplePlaceholder</name>
    <message>
        <source>Put a page in the scanner — the calibration scan runs automatically.</source>
        <translation>Eine Seite in den Scanner legen – der Kalibrierungsscan läuft von selbst.</translation>
    </message>
    <message>
        <source>Scan now</source>
        <translation>Jetzt scannen</translation>
    </message>
</context>
<context>
    <name>ScanAreaView</name>
    <message>
        <source>Stop scanning</source>
        <translation>Scannen beenden</translation>
    </message>
</context>
<context>
    <name>ScanMenu</name>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Show in folder</source>
        <translation>Im Ordner zeigen</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Rename…</source>
        <translation>Umbenennen …</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
</context>
<context>
    <name>ScansBrowserView</name>
    <message>
        <source>No scans yet</source>
        <translation>Noch keine Scans</translation>
    </message>
</context>
<context>
    <name>ScansGrid</name>
    <message>
        <source>My scans</source>
        <translation>Meine Scans</translation>
    </message>
</context>
<context>
    <name>SettingsChip</name>
    <message>
        <source>Scan settings</source>
        <translation>Scan-Einstellungen</translation>
    </message>
</context>
<context>
    <name>Spinner</name>
    <message>
        <source>Busy</source>
        <translation>Beschäftigt</translation>
    </message>
</context>
<context>
    <name>TabButton</name>
    <message>
        <source>Choose a preset</source>
        <translation>Vorlage auswählen</translation>
    </message>
</context>
<context>
    <name>TextRecognition</name>
    <message>
        <source>The text recognition program is missing; please reinstall the application.</source>
        <translation>Das Programm zur Texterkennung fehlt; bitte die Anwendung neu installieren.</translation>
    </message>
    <message>
        <source>The text recognition program doesn&apos;t start; please reinstall the application.</source>
        <translation>Das Programm zur Texterkennung startet nicht; bitte die Anwendung neu installieren.</translation>
    </message>
    <message>
        <source>No languages for text recognition are installed; install the package tesseract-ocr-eng or that of another language.</source>
        <translation>Für die Texterkennung ist keine Sprache installiert; bitte das Paket tesseract-ocr-deu oder das einer anderen Sprache installieren.</translation>
    </message>
</context>
<context>
    <name>TrafficLights</name>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>Minimise</source>
        <translation>Minimieren</translation>
    </message>
</context>
<context>
    <name>UpdateWindow</name>
    <message>
        <source>Updates for VELMOR</source>
        <translation>Updates für VELMOR</translation>
    </message>
    <message>
        <source>There is no software centre here that could look for updates.</source>
        <translation>Hier gibt es keine Software-Verwaltung, die nach Updates suchen könnte.</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>velmor::AppModel</name>
    <message>
        <source>Ready to scan</source>
        <translation>Bereit</translation>
    </message>
    <message>
        <source>No scanner found</source>
        <translation>Kein Scanner gefunden</translation>
    </message>
    <message>
        <source>Looking for scanners…</source>
        <translation>Scanner werden gesucht …</translation>
    </message>
    <message>
        <source>Saved 1 page</source>
        <translation>1 Seite gespeichert</translation>
    </message>
    <message numerus="yes">
        <source>Saved %n pages</source>
        <translation>
            <numerusform>%n Seite gespeichert</numerusform>
            <numerusform>%n Seiten gespeichert</numerusform>
        </translation>
    </message>
    <message>
        <source>The scanner engine ended unexpectedly.</source>
        <translation>Die Scan-Technik wurde unerwartet beendet.</translation>
    </message>
    <message>
        <source>%1 connected</source>
        <translation>%1 verbunden</translation>
    </message>
    <message>
        <source>Engine: %1</source>
        <translation>Scan-Technik: %1</translation>
    </message>
    <message>
        <source>Scanning…</source>
        <translation>Es wird gescannt …</translation>
    </message>
    <message>
        <source>Captured page %1…</source>
        <translation>Seite %1 erfasst …</translation>
    </message>
    <message>
        <source>Nothing scanned</source>
        <translation>Nichts gescannt</translation>
    </message>
    <message>
        <source>Calibration ready</source>
        <translation>Kalibrierung bereit</translation>
    </message>
    <message>
        <source>Couldn&apos;t scan — try again</source>
        <translation>Scannen nicht möglich – bitte noch einmal versuchen</translation>
    </message>
    <message>
        <source>Engine is out of date — rebuild it (build-engine.command)</source>
        <translation>Die Scan-Technik ist veraltet – bitte neu bauen (build-engine.command)</translation>
    </message>
    <message>
        <source>Saved preset “%1”</source>
        <translation>Vorlage „%1“ gesichert</translation>
    </message>
    <message>
        <source>Waiting for paper…</source>
        <translation>Warten auf Papier …</translation>
    </message>
    <message>
        <source>Making text searchable…</source>
        <translation>Text wird durchsuchbar gemacht …</translation>
    </message>
    <message>
        <source>Saving PDF…</source>
        <translation>PDF wird gespeichert …</translation>
    </message>
    <message>
        <source>Couldn&apos;t save the PDF</source>
        <translation>Die PDF ließ sich nicht speichern</translation>
    </message>
    <message>
        <source>Couldn&apos;t save the PDF — page images kept in the scans folder</source>
        <translation>Die PDF ließ sich nicht speichern – die Seitenbilder bleiben im Scan-Ordner</translation>
    </message>
    <message>
        <source>Text recognition failed — scan saved without it</source>
        <translation>Texterkennung fehlgeschlagen – Scan ohne sie gespeichert</translation>
    </message>
    <message>
        <source>Calibration scan…</source>
        <translation>Kalibrierungsscan …</translation>
    </message>
</context>
<context>
    <name>velmor::BaseWidget</name>
    <message>
        <source>%1 dpi</source>
        <translation>%1 dpi</translation>
    </message>
    <message>
        <source>+ OCR</source>
        <translation>+ OCR</translation>
    </message>
    <message>
        <source>Batch</source>
        <translation>Stapel</translation>
    </message>
    <message>
        <source>Preset</source>
        <translation>Vorlage</translation>
    </message>
</context>
<context>
    <name>velmor::Calibration</name>
    <message>
        <source>No scanner found — switch it on or connect it, then scan</source>
        <translation>Kein Scanner gefunden – einschalten oder anschließen, dann scannen</translation>
    </message>
</context>
<context>
    <name>velmor::EditorWords</name>
    <message>
        <source>Corner %1/4 — keep clicking</source>
        <translation>Ecke %1/4 – weiterklicken</translation>
    </message>
    <message>
        <source>Click the 4 corners of a document</source>
        <translation>Die 4 Ecken eines Dokuments anklicken</translation>
    </message>
    <message>
        <source>1 box — drag corners to adjust, add more, then Apply</source>
        <translation>1 Rahmen – Ecken zum Anpassen ziehen, weitere hinzufügen, dann „Anwenden“</translation>
    </message>
    <message numerus="yes">
        <source>%n boxes — drag corners to adjust, add more, then Apply</source>
        <translation>
            <numerusform>%n Rahmen – Ecken zum Anpassen ziehen, weitere hinzufügen, dann „Anwenden“</numerusform>
            <numerusform>%n Rahmen – Ecken zum Anpassen ziehen, weitere hinzufügen, dann „Anwenden“</numerusform>
        </translation>
    </message>
    <message>
        <source>Click the darkest ink to set the black point — or drag the sliders</source>
        <translation>Für den Schwarzpunkt die dunkelste Tinte anklicken – oder die Regler ziehen</translation>
    </message>
    <message>
        <source>Now click the white paper — or drag the sliders</source>
        <translation>Jetzt das weiße Papier anklicken – oder die Regler ziehen</translation>
    </message>
    <message>
        <source>Fine-tune with the sliders, then Apply</source>
        <translation>Mit den Reglern fein einstellen, dann „Anwenden“</translation>
    </message>
    <message>
        <source>Box %1, top left corner</source>
        <translation>Rahmen %1, Ecke oben links</translation>
    </message>
    <message>
        <source>Box %1, top right corner</source>
        <translation>Rahmen %1, Ecke oben rechts</translation>
    </message>
    <message>
        <source>Box %1, bottom right corner</source>
        <translation>Rahmen %1, Ecke unten rechts</translation>
    </message>
    <message>
        <source>Box %1, bottom left corner</source>
        <translation>Rahmen %1, Ecke unten links</translation>
    </message>
    <message>
        <source>%1% from the left, %2% from the top</source>
        <translation>%1 % von links, %2 % von oben</translation>
    </message>
</context>
<context>
    <name>velmor::GlobalMenu</name>
    <message>
        <source>About VELMOR</source>
        <translation>Über VELMOR</translation>
    </message>
    <message>
        <source>Check for Updates…</source>
        <translation>Nach Updates suchen …</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
</context>
<context>
    <name>velmor::PageEditor</name>
    <message>
        <source>This file can&apos;t be opened</source>
        <translation>Diese Datei lässt sich nicht öffnen</translation>
    </message>
    <message>
        <source>This page can&apos;t be shown</source>
        <translation>Diese Seite lässt sich nicht anzeigen</translation>
    </message>
    <message>
        <source>Not applied — the file isn&apos;t there any more</source>
        <translation>Nicht angewendet – die Datei ist nicht mehr da</translation>
    </message>
    <message>
        <source>Not applied — the file has been changed meanwhile</source>
        <translation>Nicht angewendet – die Datei wurde inzwischen geändert</translation>
    </message>
</context>
<context>
    <name>velmor::PageEdits</name>
    <message numerus="yes">
        <source>Cropped into %n pages</source>
        <translation>
            <numerusform>In %n Seite zugeschnitten</numerusform>
            <numerusform>In %n Seiten zugeschnitten</numerusform>
        </translation>
    </message>
    <message>
        <source>Cropped</source>
        <translation>Zugeschnitten</translation>
    </message>
    <message>
        <source>Magic applied to page %1 — paintbrush copies it to other scans, Ctrl+Z undoes</source>
        <translation>Zauber auf Seite %1 angewendet – der Pinsel überträgt ihn auf andere Scans, Strg+Z macht ihn rückgängig</translation>
    </message>
    <message>
        <source>Not applied — the document can&apos;t take the new pages</source>
        <translation>Nicht angewendet – das Dokument kann die neuen Seiten nicht aufnehmen</translation>
    </message>
</context>
<context>
    <name>velmor::ScanArea</name>
    <message>
        <source>1 page</source>
        <translation>1 Seite</translation>
    </message>
    <message numerus="yes">
        <source>%n pages</source>
        <translation>
            <numerusform>%n Seite</numerusform>
            <numerusform>%n Seiten</numerusform>
        </translation>
    </message>
    <message>
        <source>Looking for scanners…</source>
        <translation>Scanner werden gesucht …</translation>
    </message>
    <message>
        <source>Tap to find scanner</source>
        <translation>Scanner suchen</translation>
    </message>
    <message>
        <source>page %1 of %2</source>
        <translation>Seite %1 von %2</translation>
    </message>
</context>
<context>
    <name>velmor::ScanEngineClient</name>
    <message>
        <source>scanengine executable not found in bundle</source>
        <translation>Das Programm scanengine fehlt in dieser Installation</translation>
    </message>
</context>
<context>
    <name>velmor::ScanFiles</name>
    <message>
        <source>Couldn&apos;t write — folder isn&apos;t writable</source>
        <translation>Schreiben nicht möglich – der Ordner ist schreibgeschützt</translation>
    </message>
    <message>
        <source>Rotated</source>
        <translation>Gedreht</translation>
    </message>
    <message numerus="yes">
        <source>Merged %n scans</source>
        <translation>
            <numerusform>%n Scan zusammengefügt</numerusform>
            <numerusform>%n Scans zusammengefügt</numerusform>
        </translation>
    </message>
    <message>
        <source>Select 2+ scans to merge</source>
        <translation>Zum Zusammenfügen mindestens 2 Scans auswählen</translation>
    </message>
    <message>
        <source>Split into pages</source>
        <translation>In Seiten geteilt</translation>
    </message>
    <message>
        <source>Select a multi-page PDF to split</source>
        <translation>Zum Teilen ein PDF mit mehreren Seiten auswählen</translation>
    </message>
    <message>
        <source>A scan needs a name</source>
        <translation>Ein Scan braucht einen Namen</translation>
    </message>
    <message>
        <source>A name can&apos;t contain “/”</source>
        <translation>Ein Name kann kein „/“ enthalten</translation>
    </message>
    <message>
        <source>A name can&apos;t begin with a dot</source>
        <translation>Ein Name kann nicht mit einem Punkt beginnen</translation>
    </message>
    <message>
        <source>This name is too long</source>
        <translation>Dieser Name ist zu lang</translation>
    </message>
    <message>
        <source>There is a scan of this name already</source>
        <translation>Einen Scan dieses Namens gibt es schon</translation>
    </message>
    <message>
        <source>Couldn&apos;t rename — folder isn&apos;t writable</source>
        <translation>Umbenennen nicht möglich – der Ordner ist schreibgeschützt</translation>
    </message>
    <message>
        <source>This scan isn&apos;t there any more</source>
        <translation>Diesen Scan gibt es nicht mehr</translation>
    </message>
</context>
<context>
    <name>velmor::ScanHandover</name>
    <message>
        <source>Couldn&apos;t open %1</source>
        <translation>%1 ließ sich nicht öffnen</translation>
    </message>
    <message>
        <source>Copied 1 scan</source>
        <translation>1 Scan kopiert</translation>
    </message>
    <message numerus="yes">
        <source>Copied %n scans</source>
        <translation>
            <numerusform>%n Scans kopiert</numerusform>
            <numerusform>%n Scans kopiert</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>velmor::ScanImport</name>
    <message numerus="yes">
        <source>%1 and %n more</source>
        <translation>
            <numerusform>%1 und %n weitere</numerusform>
            <numerusform>%1 und %n weitere</numerusform>
        </translation>
    </message>
    <message>
        <source>Imported 1 scan</source>
        <translation>1 Scan importiert</translation>
    </message>
    <message numerus="yes">
        <source>Imported %n scans</source>
        <translation>
            <numerusform>%n Scans importiert</numerusform>
            <numerusform>%n Scans importiert</numerusform>
        </translation>
    </message>
    <message>
        <source>Couldn&apos;t read %1</source>
        <translation>Nicht lesbar: %1</translation>
    </message>
    <message>
        <source>1 scan is here already</source>
        <translation>1 Scan ist schon hier</translation>
    </message>
    <message numerus="yes">
        <source>%n scans are here already</source>
        <translation>
            <numerusform>%n Scans sind schon hier</numerusform>
            <numerusform>%n Scans sind schon hier</numerusform>
        </translation>
    </message>
    <message>
        <source>Nothing to import</source>
        <translation>Nichts zu importieren</translation>
    </message>
    <message>
        <source>Some files couldn&apos;t be imported</source>
        <translation>Einige Dateien konnten nicht importiert werden</translation>
    </message>
</context>
<context>
    <name>velmor::ScanImports</name>
    <message>
        <source>Importing page %1 of %2…</source>
        <translation>Seite %1 von %2 wird importiert …</translation>
    </message>
    <message>
        <source>Importing…</source>
        <translation>Wird importiert …</translation>
    </message>
</context>
<context>
    <name>velmor::ScansBrowser</name>
    <message>
        <source>Deleted</source>
        <translation>Gelöscht</translation>
    </message>
    <message>
        <source>Undid last edit</source>
        <translation>Letzte Bearbeitung rückgängig gemacht</translation>
    </message>
    <message>
        <source>Nothing to undo</source>
        <translation>Nichts rückgängig zu machen</translation>
    </message>
    <message>
        <source>Select scans first</source>
        <translation>Zuerst Scans auswählen</translation>
    </message>
    <message>
        <source>Applying magic to 1 scan…</source>
        <translation>Zauber wird auf 1 Scan angewendet …</translation>
    </message>
    <message numerus="yes">
        <source>Applying magic to %n scans…</source>
        <translation>
            <numerusform>Zauber wird auf %n Scan angewendet …</numerusform>
            <numerusform>Zauber wird auf %n Scans angewendet …</numerusform>
        </translation>
    </message>
    <message>
        <source>Some scans couldn&apos;t be written</source>
        <translation>Einige Scans konnten nicht geschrieben werden</translation>
    </message>
    <message>
        <source>Magic applied to 1 scan</source>
        <translation>Zauber auf 1 Scan angewendet</translation>
    </message>
    <message numerus="yes">
        <source>Magic applied to %n scans</source>
        <translation>
            <numerusform>Zauber auf %n Scan angewendet</numerusform>
            <numerusform>Zauber auf %n Scans angewendet</numerusform>
        </translation>
    </message>
    <message>
        <source>No scan to edit</source>
        <translation>Kein Scan zu bearbeiten</translation>
    </message>
    <message>
        <source>Renamed</source>
        <translation>Umbenannt</translation>
    </message>
</context>
</TS>
