pragma ComponentBehavior: Bound
import QtQuick
import Vellomar.Destinations
import Vellomar.Glance
import Vellomar.Overview
import Vellomar.Sources
import Vellomar.Window

// The sections, in the order of AppModel.Section: the one list that sidebar, pages and emblem go by.
QtObject {
    id: root

    required property AppModel model
    required property Summary summary

    readonly property list<WindowSection> all: [
        WindowSection {
            symbol: "gauge.with.needle"
            page: Component {
                OverviewPage {
                    model: root.model
                    summary: root.summary
                }
            }
        },
        WindowSection {
            symbol: "clock.arrow.circlepath"
            page: Component {
                PlaceholderPage {
                    symbol: "clock.arrow.circlepath"
                    title: root.model.title(AppModel.Section.Restore)
                    subtitle: qsTranslate("Texts", "Scegli una versione e recupera file o cartelle")
                }
            }
        },
        WindowSection {
            symbol: "folder"
            page: Component {
                SourcesPage {
                    model: root.model
                }
            }
        },
        WindowSection {
            symbol: "externaldrive"
            page: Component {
                DestinationsPage {
                    model: root.model
                }
            }
        },
        WindowSection {
            symbol: "list.bullet.rectangle"
            page: Component {
                PlaceholderPage {
                    symbol: "list.bullet.rectangle"
                    title: root.model.title(AppModel.Section.Activity)
                    subtitle: qsTranslate("Texts", "Esito e durata di ogni backup")
                }
            }
        },
        WindowSection {
            symbol: "gearshape"
            page: Component {
                PlaceholderPage {
                    symbol: "gearshape"
                    title: root.model.title(AppModel.Section.Settings)
                    subtitle: qsTranslate("Texts", "Preferenze di Vellomar")
                }
            }
        }
    ]
}
