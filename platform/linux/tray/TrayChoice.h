// Whether the item needs an X icon, given what is known of the tray on the bus. Decides only: it
// looks for nothing and waits for nothing.
#pragma once

namespace vorlane::platform {

// A tray on the bus shows the item better, and a panel that brings one often brings an X tray a
// moment earlier. Therefore an icon is shown only after there has been none for a while, and
// withdrawn at once.
class TrayChoice {
public:
    enum class Step {
        nothing,
        wait,  // for a while, then tell of it by `waited`
        show,
        withdraw,  // and wait no longer
    };

    // Told as often as it is found out.
    Step watcher(bool present)
    {
        watched = present;
        if (present) return place == Place::none ? Step::nothing : leave();
        return place == Place::none ? arrive() : Step::nothing;
    }

    Step waited()
    {
        if (place != Place::awaited) return Step::nothing;
        place = Place::shown;
        return Step::show;
    }

    // The display that had the icon has gone.
    Step lost() { return place == Place::shown ? leave() : Step::nothing; }

    // It is worth another try, as after sleep.
    Step again() { return place == Place::none && !watched ? arrive() : Step::nothing; }

private:
    enum class Place { none, awaited, shown };

    Step arrive()
    {
        place = Place::awaited;
        return Step::wait;
    }

    Step leave()
    {
        place = Place::none;
        return Step::withdraw;
    }

    Place place = Place::none;
    bool watched = true;  // until it is found out
};

}  // namespace vorlane::platform
