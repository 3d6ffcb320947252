// IVYRFeature: an engine feature - a feature type name and named attributes,
// some of them lists of texts.
//
// Attribute names keep the order in which they were first set. Separately,
// the feature keeps its attribute order: the names set with
// setOrderedAttribute, in the order they were set, which is the order of the
// user's attributes in a schema. Texts are NUL-terminated, narrow code page.
#ifndef VYR_IVYRFEATURE_H
#define VYR_IVYRFEATURE_H

#include "vyr/IVYRString.h"
#include "vyr/IVYRStringArray.h"

class IVYRFeature
{
public:
    // True when the attribute exists; `value` then holds it.
    virtual bool getAttribute(const char *name, IVYRString &value) const = 0;
    virtual void setAttribute(const char *name, const char *value) = 0;
    // setAttribute, and the name goes to the end of the attribute order.
    virtual void setOrderedAttribute(const char *name, const char *value) = 0;
    virtual void removeAttribute(const char *name) = 0;
    // Replaces the contents of `names`.
    virtual void getAllAttributeNames(IVYRStringArray &names) const = 0;
    virtual void getOrderedAttributeNames(IVYRStringArray &names) const = 0;
    // Replaces the contents of `elements`; an absent list leaves it empty.
    virtual void getListAttribute(const char *name, IVYRStringArray &elements) const = 0;
    virtual void setListAttribute(const char *name, const IVYRStringArray &elements) = 0;
    virtual void removeListAttribute(const char *name) = 0;
    virtual const char *getFeatureType() const = 0;
    virtual void setFeatureType(const char *name) = 0;
    // Evaluates `function` (such as "@TCL(...)") on this feature; its value
    // goes to `result`. False when the function cannot be evaluated. The
    // functions performed on one feature share one time limit ($VYR_TCL_SECONDS,
    // 10 s), counted from the first: make a feature for each job.
    virtual bool performFunction(const char *function, IVYRString &result) = 0;
    virtual ~IVYRFeature() = default;

protected:
    IVYRFeature() = default;
    IVYRFeature(const IVYRFeature &) = default;
    IVYRFeature &operator=(const IVYRFeature &) = default;
};

#endif // VYR_IVYRFEATURE_H
