#include "tests/gimp/gimp_scripts.h"

// The same for all versions.
const char* const kProcedures = R"scheme(
(define (said thunk)
  (call-with-current-continuation (lambda (exit)
    (let ((before *error-hook*))
      (set! *error-hook* (lambda words (set! *error-hook* before) (exit words)))
      (thunk) (set! *error-hook* before) '("done")))))
(define told (open-output-file "told.txt"))
(define (tell name thunk)
  (display name told) (display ": " told) (display (said thunk) told) (newline told))
(define (select image mask x y)
  (gimp-image-resize image (+ x (car (gimp-image-get-width image)))
                     (+ y (car (gimp-image-get-height image))) x y)
  (let ((layer (car (gimp-layer-new-from-drawable (layer-of mask) image))))
    (gimp-image-insert-layer image layer 0 0)
    (gimp-layer-set-offsets layer x y)
    (gimp-image-select-item image CHANNEL-OP-REPLACE layer)
    (gimp-image-remove-layer image layer)))
(define (apply-to image preset settings seed)
  (light RUN-NONINTERACTIVE image preset settings seed))
(define (saved image file) (save-png image file) (gimp-image-delete image))
)scheme";

#if MORVALIS_GIMP_VERSION == 2

const char* const kGimpConsole = "gimp-console-2.10";
const char* const kGimpFolder = "GIMP2_DIRECTORY";
const char* const kKeysFile = "menurc";
const char* const kKeys = "(gtk_accel_path \"<Actions>/plug-in/plug-in-morvalis\" \"F9\")\n";

const char* const kVersionProcedures = R"scheme(
(define (layer-of image) (aref (cadr (gimp-image-get-layers image)) 0))
(define (opened file) (car (gimp-file-load RUN-NONINTERACTIVE file file)))
(define (light mode image preset settings seed)
  (plug-in-morvalis mode image (layer-of image) preset settings seed))
(define (save-png image file)
  (file-png-save RUN-NONINTERACTIVE image (layer-of image) file file 0 1 0 0 0 0 0))
(define save-whole-png save-png)
(define (save-tiff image file)
  (file-tiff-save RUN-NONINTERACTIVE image (layer-of image) file file 0))
(define (new-group image) (car (gimp-layer-group-new image)))
(define gimp-image-get-width gimp-image-width)
(define gimp-image-get-height gimp-image-height)
)scheme";

#else

const char* const kGimpConsole = "gimp-console-3.0";
const char* const kGimpFolder = "GIMP3_DIRECTORY";
const char* const kKeysFile = "shortcutsrc";
const char* const kKeys = "(file-version 1)\n(action \"plug-in-morvalis\" \"F9\")\n";

const char* const kVersionProcedures = R"scheme(
(define (layer-of image) (vector-ref (car (gimp-image-get-layers image)) 0))
(define (opened file) (car (gimp-file-load RUN-NONINTERACTIVE file)))
(define (light mode image preset settings seed)
  (plug-in-morvalis #:run-mode mode #:image image #:drawables (vector (layer-of image))
                    #:preset preset #:settings settings #:seed seed))
(define (save-whole-png image file)
  (file-png-export #:run-mode RUN-NONINTERACTIVE #:image image #:file file #:compression 1
                   #:save-transparent TRUE))
(define (save-png image file)  ; GIMP 3 saves the picture, not the layer
  (gimp-image-resize-to-layers image)
  (save-whole-png image file))
(define (save-tiff image file)
  (file-tiff-export #:run-mode RUN-NONINTERACTIVE #:image image #:file file
                    #:compression "none" #:save-transparent-pixels TRUE))
(define (new-group image) (car (gimp-group-layer-new image "group")))
(define PRECISION-U32-GAMMA PRECISION-U32-NON-LINEAR)
)scheme";

#endif
