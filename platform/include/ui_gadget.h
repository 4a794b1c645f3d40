#pragma once
/* Gadget host: loads a module as a shared object and runs its screens inside the host's own window.
 *
 * The host calls UG_MODULE_INIT once after loading, then create and start, later destroy, and UG_MODULE_EXIT before
 * it unloads the object; pause and resume follow the host's own visibility. All on the main-loop thread. */

#ifdef __cplusplus
extern "C" {
#endif

/* A running gadget; the host's. */
typedef struct ui_gadget *ui_gadget_h;

/* The request that a gadget was started with; the host's. */
typedef struct app_control *app_control_h;

/* How much of the window a gadget is given. */
enum ug_mode { UG_MODE_FULLVIEW = 0, UG_MODE_FRAMEVIEW = 1 };

/* What a module hands to the host. The host makes the record and keeps it until UG_MODULE_EXIT has returned; the
 * module fills in its callbacks and its private data, which the host passes back as the last argument. */
struct ug_module_ops {
    /* Builds the screen and returns its top object, or null when that failed. */
    void *(*create)(ui_gadget_h ug, enum ug_mode mode, app_control_h app_control, void *priv);
    void (*start)(ui_gadget_h ug, app_control_h app_control, void *priv);
    void (*pause)(ui_gadget_h ug, app_control_h app_control, void *priv);
    void (*resume)(ui_gadget_h ug, app_control_h app_control, void *priv);
    /* Takes the screen down. */
    void (*destroy)(ui_gadget_h ug, app_control_h app_control, void *priv);
    void (*message)(ui_gadget_h ug, app_control_h message, app_control_h app_control, void *priv);
    void (*event)(ui_gadget_h ug, int event, app_control_h app_control, void *priv);
    /* The host's own slot; a module leaves it as it is. */
    void (*key_event)(ui_gadget_h ug, int event, app_control_h app_control, void *priv);
    void *priv;
    int opt;
};

/* The window (an Evas_Object) that gadgets show their screens in; it stays the host's. Null when there is none. */
void *ug_get_window(void);

/* Asks the host to destroy the gadget. The host does so from its main loop, never inside this call. Fails when the
 * gadget is not running. */
int ug_destroy_me(ui_gadget_h ug);

/* Exported by the module: fills in `ops`. Returns 0, or -1 when the module cannot run. */
int UG_MODULE_INIT(struct ug_module_ops *ops);

/* Exported by the module: gives back everything that UG_MODULE_INIT took, `ops->priv` included. */
void UG_MODULE_EXIT(struct ug_module_ops *ops);

#ifdef __cplusplus
}
#endif
