#pragma once
/* A state of the screen, shown on a headless panel by the module as it is installed. */

#include <filesystem>
#include <memory>
#include <string>

#include "states.h"
#include "television/gadget.h"
#include "television/panel.h"

namespace vesk::looks {

/* Where scenes are shown: the toolkit without motion and a folder for the television's files, removed in the end. Many
   scenes may follow each other on it. */
class Stage {
public:
    /* How the toolkit of this process draws; to be set before the first call of here. */
    struct Look {
        double scale = 1;
        std::filesystem::path theme; /* empty: the one that is built */
    };
    static Look look;

    /* The one of this process, made with the first call. */
    static Stage &here();

    ~Stage();
    Stage(const Stage &) = delete;
    Stage &operator=(const Stage &) = delete;

    const Toolkit &toolkit() const { return *toolkit_; }

    /* The desktop's copies of the television's files. */
    const std::filesystem::path &share() const { return share_; }

    /* A folder of its own for the next scene. */
    std::filesystem::path next_folder();

private:
    Stage();

    std::filesystem::path folder_;
    std::filesystem::path share_;
    std::unique_ptr<Toolkit> toolkit_;
    int scenes_ = 0;
};

/* One at a time. The environment of the process tells the desktop port where the scene's files are. */
class Scene {
public:
    /* Shows `state` and lets the screen come to rest. Throws std::runtime_error with a sentence when the module ends,
       or refuses to start, on the way there, and when the stage has another scale than `setting`. */
    Scene(const State &state, const Setting &setting);
    ~Scene();
    Scene(const Scene &) = delete;
    Scene &operator=(const Scene &) = delete;

    const State &state() const { return state_; }
    const Setting &setting() const { return setting_; }
    std::string name() const { return scene_name(state_, setting_); }
    Panel &panel() { return *panel_; }

private:
    void prepare_television(const std::filesystem::path &folder) const;
    void press(const std::string &key);
    void press_towards_buttons();

    const State &state_;
    Setting setting_;
    std::unique_ptr<Panel> panel_;
    std::unique_ptr<Gadget> gadget_;
};

} // namespace vesk::looks
