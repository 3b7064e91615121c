! fortran/orvel_host.f90 - interfaces for host programs: where messages go, what a stop does, the level
!
!     subroutine to_log(context, unit, text, length) bind(c)
!       type(c_ptr), value :: context
!       integer(c_int32_t), value :: unit
!       character(kind=c_char), intent(in) :: text(*)
!       integer(c_size_t), value :: length
!     ...
!     bound = orvel_bind_unit(6, c_funloc(to_log), c_null_ptr)
!
! The name of an instruction-set level ends with c_null_char; without it the best level is used.
module orvel_host
  use, intrinsic :: iso_c_binding, only: c_char, c_int32_t, c_ptr, c_funptr
  implicit none
  public
  private :: c_char, c_int32_t, c_ptr, c_funptr

  interface
    integer(c_int32_t) function orvel_bind_unit(unit, writer, context) bind(c)
      import :: c_int32_t, c_ptr, c_funptr
      integer(c_int32_t), value :: unit
      type(c_funptr), value :: writer
      type(c_ptr), value :: context
    end function orvel_bind_unit
    subroutine orvel_set_stop_handler(handler, context) bind(c)
      import :: c_ptr, c_funptr
      type(c_funptr), value :: handler
      type(c_ptr), value :: context
    end subroutine orvel_set_stop_handler
    subroutine orvel_set_stop_status(status) bind(c)
      import :: c_int32_t
      integer(c_int32_t), value :: status
    end subroutine orvel_set_stop_status
    integer(c_int32_t) function orvel_set_thread_defaults(type, print, stop) bind(c)
      import :: c_int32_t
      integer(c_int32_t), value :: type, print, stop
    end function orvel_set_thread_defaults
    subroutine orvel_reset() bind(c)
    end subroutine orvel_reset
    integer(c_int32_t) function orvel_use_level(name) bind(c)
      import :: c_int32_t, c_char
      character(kind=c_char), intent(in), optional :: name(*)
    end function orvel_use_level
    type(c_ptr) function orvel_level() bind(c)
      import :: c_ptr
    end function orvel_level
  end interface
end module orvel_host
